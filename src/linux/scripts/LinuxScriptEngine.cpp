#include "linux/scripts/LinuxScriptEngine.h"

#include "foundation/Text.h"
#include "foundation/Url.h"
#include "linux/installed/ApplicationNames.h"
#include "linux/installed/TerminalEmulator.h"
#include "linux/running/ApplicationOpener.h"
#include "linux/screen/LinuxAccessibility.h"
#include "linux/scripts/AppleScript.h"

#include <algorithm>

namespace corvane {
namespace {

using namespace applescript;

/// AppleScript's own numbers.
namespace errorNumber {
constexpr int notRunning = -600;
constexpr int notHandled = -1708;
constexpr int invalidIndex = -1719;
constexpr int noSuchObject = -1728;
constexpr int syntax = -2741;
constexpr int handlerFailed = -10000;
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
    enum class Kind { installed, terminal, running, systemEvents, process };

    std::string name;
    Kind kind = Kind::installed;
    InstalledApplication application = {};
    /// Of a process too.
    RunningApplication running = {};
};
/// Null outside of every "tell".
using Listener = const Told*;

class Interpreter {
public:
    Interpreter(const ApplicationOpener& opener, LinuxAccessibility& accessibility)
        : opener_(opener), accessibility_(accessibility) {}

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
    using Kind = Told::Kind;

    Outcome perform(const Tell& tell, Listener listener) {
        if (const auto* process = std::get_if<Process>(&tell.target)) {
            return tellProcess(tell.body, process->name, listener);
        }
        const auto* application = std::get_if<Application>(&tell.target);
        if (!application) return tellWindow(tell, listener);
        const auto told = resolved(application->name);
        if (told) return run(tell.body, &*told);
        return Failure{errorNumber::noSuchObject,
                       "Can’t get application \"" + application->name + "\"."};
    }

    Outcome tellProcess(const Block& body, const std::string& name, Listener listener) {
        if (listener && listener->kind == Kind::systemEvents) {
            if (const auto told = running(name, Kind::process)) return run(body, &*told);
        }
        return Failure{errorNumber::noSuchObject,
                       gotAnError(listener) + "Can’t get process \"" + name + "\"."};
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
        switch (listener->kind) {
        case Kind::terminal:
            bringTerminalForward();
            return std::nullopt;
        case Kind::installed:
            return launched(*listener, opener_.openApplication(listener->application));
        case Kind::running:
            opener_.running().activate(listener->running);
            return std::nullopt;
        default:
            return std::nullopt;
        }
    }

    Outcome perform(const DoScript& script, Listener listener) {
        if (!listener || listener->kind != Kind::terminal)
            return notUnderstood("do script", listener);
        const auto emulator = opener_.installed().terminalCommand();
        if (!emulator) {
            return Failure{errorNumber::notRunning,
                           "Terminal got an error: Application isn’t running."};
        }
        return launched(*listener, terminalEmulator::open(*emulator, script.command));
    }

    Outcome perform(const OpenLocation& location, Listener listener) {
        if (listener && listener->kind == Kind::installed) return opened(*listener, location.url);
        const auto url = Url::parse(location.url);
        const auto done = url ? opener_.open(*url) : Error{"The URL is not valid."};
        if (done) return std::nullopt;
        return Failure{errorNumber::nothingOpensIt, done.error().localizedDescription};
    }

    Outcome perform(const MakeTab& tab, Listener listener) {
        if (listener && listener->kind == Kind::installed) return opened(*listener, tab.url);
        return notUnderstood("make", listener);
    }

    /// Of a window's buttons, only the one that makes it as large as it gets is known.
    Outcome perform(const Click& click, Listener listener) {
        if (!listener || listener->kind != Kind::process) return notUnderstood("click", listener);
        const std::string window = "window " + std::to_string(click.window);
        const std::string process = "process \"" + listener->name + "\"";
        const auto found = windowOf(*listener, click.window);
        if (!found) {
            return Failure{errorNumber::invalidIndex, "System Events got an error: Can’t get " +
                                                          window + " of " + process +
                                                          ". Invalid index."};
        }
        constexpr int zoomButton = 2;
        if (click.button != zoomButton) {
            return Failure{errorNumber::noSuchObject,
                           "System Events got an error: Can’t get button " +
                               std::to_string(click.button) + " of " + window + " of " + process +
                               "."};
        }
        return controlled(accessibility_.zoom(*found));
    }

    /// Of all keys, only those for fullscreen.
    Outcome perform(const Keystroke& keystroke, Listener listener) {
        const auto& modifiers = keystroke.modifiers;
        const bool isForFullscreen = text::equalsIgnoringCase(keystroke.text, "f") &&
                                     std::ranges::count(modifiers, "control") > 0 &&
                                     std::ranges::count(modifiers, "command") > 0;
        if (!listener || listener->kind != Kind::process || !isForFullscreen) {
            return notUnderstood("keystroke", listener);
        }
        const auto found = windowOf(*listener, 1);
        if (!found) return controlled(Accessibility::invalidElement);
        return controlled(accessibility_.toggleFullscreen(*found));
    }

    std::optional<AccessibilityWindow> windowOf(const Told& process, int index) {
        const auto windows = accessibility_.windows(process.running.processIdentifier);
        if (!windows || index < 1 || static_cast<std::size_t>(index) > windows->size()) {
            return std::nullopt;
        }
        return windows->at(static_cast<std::size_t>(index) - 1);
    }

    static Outcome controlled(int result) {
        if (result == Accessibility::success) return std::nullopt;
        return Failure{errorNumber::handlerFailed,
                       "System Events got an error: AppleEvent handler failed."};
    }

    Outcome opened(const Told& told, const std::string& url) {
        return launched(told, opener_.launch(told.application, {url}));
    }

    static Outcome launched(const Told& told, const Result<void>& result) {
        if (result) return std::nullopt;
        return Failure{errorNumber::cannotLaunch,
                       gotAnError(&told) + result.error().localizedDescription};
    }

    static Outcome notUnderstood(const std::string& command, Listener listener) {
        return Failure{errorNumber::notHandled,
                       gotAnError(listener) + "Can’t continue " + command + "."};
    }

    static std::string gotAnError(Listener listener) {
        if (!listener) return {};
        const bool isProcess = listener->kind == Kind::process;
        return (isProcess ? "System Events" : listener->name) + " got an error: ";
    }

    std::optional<Told> resolved(const std::string& name) const {
        // An emulator that is no installed application is still a Terminal.
        if (text::equalsIgnoringCase(name, "Terminal")) return Told{name, Kind::terminal};
        if (text::equalsIgnoringCase(name, "System Events")) return Told{name, Kind::systemEvents};
        const auto application = applicationNamed(opener_.installed(), name);
        if (!application) return running(name, Kind::running);
        const auto terminal = opener_.installed().terminal();
        const bool isTerminal = terminal && application->bundlePath == terminal->bundlePath;
        return Told{name, isTerminal ? Kind::terminal : Kind::installed, *application};
    }

    std::optional<Told> running(const std::string& name, Kind kind) const {
        for (const auto& application : opener_.running().list()) {
            const auto isName = [&](std::string_view own) {
                return text::equalsIgnoringCase(own, name);
            };
            if (isName(application.localizedName.value_or("")) ||
                std::ranges::any_of(application.otherNames, isName, &OtherName::name)) {
                return Told{name, kind, {}, application};
            }
        }
        return std::nullopt;
    }

    /// Where none runs, the window that `do script` opens is the first one.
    void bringTerminalForward() const {
        const auto& running = opener_.running();
        for (const auto& application : running.list()) {
            const bool isTerminal = application.bundleIdentifier == terminalIdentifier ||
                                    std::ranges::count(application.otherNames, terminalIdentifier,
                                                       &OtherName::bundleIdentifier) > 0;
            if (isTerminal && running.activate(application)) {
                return;
            }
        }
    }

    const ApplicationOpener& opener_;
    LinuxAccessibility& accessibility_;
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
    if (const auto failure = Interpreter(opener_, accessibility_).run(*script, nullptr)) {
        return ScriptOutcome{.error = scriptError(*failure)};
    }
    return ScriptOutcome{.hasResult = !script->empty()};
}

} // namespace corvane
