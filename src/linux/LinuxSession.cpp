#include "linux/LinuxSession.h"

#include "foundation/Diagnostics.h"
#include "foundation/Url.h"
#include "linux/session/SessionEnd.h"
#include "linux/session/SingleInstance.h"
#include "linux/session/SystemAppearance.h"
#include "linux/system/EventThread.h"
#include "linux/system/UserFolders.h"
#include "platform/Bundles.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace corvane {

namespace {

void tellWhatHappens() {
    using Clock = std::chrono::steady_clock;
    setDiagnosticSink([start = Clock::now()](const std::string& line) {
        const std::chrono::duration<double> time = Clock::now() - start;
        std::fprintf(stderr, "%.3f %s\n", time.count(), line.c_str());
    });
}

} // namespace

struct LinuxSession::Parts {
    SingleInstance instance{path::join(userFolders::data(), programName)};
    std::optional<SystemAppearance> appearance;
    const std::string startupId = SessionEnd::takeStartupId();
    std::optional<SessionEnd> end;
    /// Last, so that nothing is called any more when what it calls goes.
    EventThread events;
};

LinuxSession::LinuxSession() {
    if (std::getenv("CORVANE_DIAGNOSTICS")) tellWhatHappens();
    parts_ = std::make_unique<Parts>();
    if (isFirst()) {
        parts_->appearance.emplace(parts_->events);
    } else if (exitStatus() != 0) {
        const auto why = whyNotHere();
        std::fprintf(stderr, "%s\n",
                     why.empty() ? "Corvane is running already, but doesn't answer." : why.c_str());
    }
}

LinuxSession::~LinuxSession() = default;

bool LinuxSession::isFirst() const {
    return parts_->instance.start() == SingleInstance::Start::first;
}

std::string LinuxSession::whyNotHere() const {
    if (parts_->instance.start() != SingleInstance::Start::isElsewhere) return {};
    return "You have Corvane open on another display. Quit it there to use it here.";
}

int LinuxSession::exitStatus() const {
    const auto start = parts_->instance.start();
    return start == SingleInstance::Start::first || start == SingleInstance::Start::cameForward ? 0
                                                                                                : 1;
}

std::optional<bool> LinuxSession::prefersDark() const {
    return parts_->appearance ? parts_->appearance->isDark() : std::nullopt;
}

void LinuxSession::serve(const Post& post, const Calls& calls) {
    const auto posting = [post](const std::function<void()>& call) {
        return [post, call] { post(call); };
    };
    const auto answering = [post](const std::function<void()>& call) {
        return [post, call](std::function<void()> done) {
            post([call, done = std::move(done)] {
                call();
                done();
            });
        };
    };
    parts_->end.emplace(parts_->events, parts_->startupId,
                        SessionEnd::Calls{.prepare = answering(calls.sessionWillEnd),
                                          .goOn = posting(calls.sessionGoesOn),
                                          .terminate = posting(calls.terminate)});
    parts_->instance.serve(
        parts_->events,
        [post, reopen = calls.reopen](const std::string& token, std::function<void()> done) {
            post([reopen, token, done = std::move(done)] {
                reopen(token);
                done();
            });
        });
    parts_->appearance->whenTold(parts_->events, posting(calls.appearanceIsKnown));
}

EventThread& LinuxSession::events() {
    return parts_->events;
}

} // namespace corvane
