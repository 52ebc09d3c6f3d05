#include "linux/LinuxScriptEngine.h"

#include "foundation/Text.h"
#include "foundation/Url.h"
#include "linux/AppleScript.h"
#include "linux/ApplicationNames.h"
#include "linux/ApplicationOpener.h"
#include "linux/TerminalEmulator.h"

namespace corvane {
namespace {

using namespace applescript;

/// AppleScript's own numbers.
namespace errorNumber {
constexpr int notRunning = -600;
constexpr int notHandled = -1708;
constexpr int noSuchObject = -1728;
constexpr int syntax = -2741;
constexpr int cannotLaunch = -10810;
constexpr int nothingOpensIt = -10814;
} // namespace errorNumber

struct Failure {
    int number = 0;
    std::string message;
};
using Outcome = std::optional<Failure>;

/// Whom the statements of a block are told to.
struct Told {
    std::string name;
    bool isTerminal = false;
    InstalledApplication application;
};
/// Null outside of every "tell".
using Listener = const Told*;

class Interpreter {
public:
    explicit Interpreter(const ApplicationOpener& opener) : opener_(opener) {}

    Outcome run(const Block& block, Listener listener) {
        for (const auto& statement : block) {
            const auto perform = [&](const auto& action) {
                return this->perform(action, listener);
            };
            if (auto failure = std::visit(perform, statement.action)) return failure;
        }
        return std::nullopt;
    }

private:
    Outcome perform(const Tell& tell, Listener listener) {
        const auto* application = std::get_if<Application>(&tell.target);
        if (!application) return tellWindow(tell, listener);
        const auto told = resolved(application->name);
        if (told) return run(tell.body, &*told);
        return Failure{errorNumber::noSuchObject,
                       "Can’t get application \"" + application->name + "\"."};
    }

    /// Installed applications have no windows of their own here: the application listens.
    Outcome tellWindow(const Tell& tell, Listener listener) {
        if (listener) return run(tell.body, listener);
        const auto index = std::to_string(std::get<Window>(tell.target).index);
        return Failure{errorNumber::noSuchObject, "Can’t get window " + index + "."};
    }

    Outcome perform(const Try& attempt, Listener listener) {
        if (!run(attempt.body, listener)) return std::nullopt;
        return run(attempt.handler, listener);
    }

    Outcome perform(const Activate&, Listener listener) {
        if (!listener) return std::nullopt;
        if (listener->isTerminal) {
            bringTerminalForward();
            return std::nullopt;
        }
        return launched(*listener, opener_.openApplication(listener->application));
    }

    Outcome perform(const DoScript& script, Listener listener) {
        if (!listener || !listener->isTerminal) return notUnderstood("do script", listener);
        const auto emulator = terminalEmulator::preferred();
        if (!emulator) {
            return Failure{errorNumber::notRunning,
                           "Terminal got an error: Application isn’t running."};
        }
        return launched(*listener, terminalEmulator::open(*emulator, script.command));
    }

    Outcome perform(const OpenLocation& location, Listener listener) {
        if (listener && !listener->isTerminal) return opened(*listener, location.url);
        const auto url = Url::parse(location.url);
        const auto error = url ? opener_.open(*url) : Error{"The URL is not valid."};
        if (!error) return std::nullopt;
        return Failure{errorNumber::nothingOpensIt, error->localizedDescription};
    }

    Outcome perform(const MakeTab& tab, Listener listener) {
        if (listener && !listener->isTerminal) return opened(*listener, tab.url);
        return notUnderstood("make", listener);
    }

    Outcome opened(const Told& told, const std::string& url) {
        return launched(told, opener_.launch(told.application, {url}));
    }

    static Outcome launched(const Told& told, const std::optional<Error>& error) {
        if (!error) return std::nullopt;
        return Failure{errorNumber::cannotLaunch,
                       told.name + " got an error: " + error->localizedDescription};
    }

    static Outcome notUnderstood(const std::string& command, Listener listener) {
        const std::string who = listener ? listener->name + " got an error: " : "";
        return Failure{errorNumber::notHandled, who + "Can’t continue " + command + "."};
    }

    std::optional<Told> resolved(const std::string& name) const {
        // An emulator that is no installed application is still a Terminal.
        if (text::equalsIgnoringCase(name, "Terminal")) return Told{name, true, {}};
        const auto application = applicationNamed(opener_.catalogue(), name);
        if (!application) return std::nullopt;
        return Told{name, application->bundleIdentifier == terminalIdentifier, *application};
    }

    /// Where none runs, the window that `do script` opens is the first one.
    void bringTerminalForward() const {
        const auto& running = opener_.running();
        if (!running.list || !running.activate) return;
        for (const auto& application : running.list()) {
            if (application.bundleIdentifier == terminalIdentifier &&
                running.activate(application.processIdentifier)) {
                return;
            }
        }
    }

    const ApplicationOpener& opener_;
};

ScriptError scriptError(const Failure& failure) {
    const std::string quoted =
        text::replacingAll(text::replacingAll(failure.message, "\\", "\\\\"), "\"", "\\\"");
    return {failure.number, failure.message,
            "{ NSAppleScriptErrorMessage = \"" + quoted + "\"; NSAppleScriptErrorNumber = \"" +
                std::to_string(failure.number) + "\"; }"};
}

} // namespace

std::optional<ScriptOutcome> LinuxScriptEngine::execute(const std::string& source) {
    const auto script = parse(source);
    if (!script) {
        return ScriptOutcome{
            .error = scriptError({errorNumber::syntax, script.error().localizedDescription})};
    }
    if (const auto failure = Interpreter(opener_).run(*script, nullptr)) {
        return ScriptOutcome{.error = scriptError(*failure)};
    }
    return ScriptOutcome{.hasResult = !script->empty()};
}

} // namespace corvane
