#include "linux/LinuxSession.h"

#include "linux/session/SessionEnd.h"
#include "linux/session/SingleInstance.h"
#include "linux/session/SystemAppearance.h"
#include "linux/system/EventThread.h"
#include "linux/system/UserFolders.h"

#include <cstdio>

namespace corvane {

struct LinuxSession::Parts {
    SingleInstance instance{userFolders::data() + "/Corvane"};
    std::optional<SystemAppearance> appearance;
    SessionEnd end;
    /// Last, so that nothing is called any more when what it calls goes.
    EventThread events;
};

LinuxSession::LinuxSession() : parts_(std::make_unique<Parts>()) {
    if (isFirst()) {
        parts_->appearance.emplace(parts_->events);
    } else if (exitStatus() != 0) {
        std::fputs("Corvane is running already, but doesn't answer.\n", stderr);
    }
}

LinuxSession::~LinuxSession() = default;

bool LinuxSession::isFirst() const {
    return parts_->instance.start() == SingleInstance::Start::first;
}

int LinuxSession::exitStatus() const {
    return parts_->instance.start() == SingleInstance::Start::noAnswer ? 1 : 0;
}

std::optional<bool> LinuxSession::prefersDark() const {
    return parts_->appearance ? parts_->appearance->isDark() : std::nullopt;
}

void LinuxSession::serve(Post post, std::function<void()> reopen, std::function<void()> terminate) {
    parts_->end.serve(parts_->events,
                      [post, terminate = std::move(terminate)] { post(terminate); });
    parts_->instance.serve(parts_->events,
                           [post, reopen = std::move(reopen)](std::function<void()> done) {
                               post([reopen, done = std::move(done)] {
                                   reopen();
                                   done();
                               });
                           });
}

EventThread& LinuxSession::events() {
    return parts_->events;
}

} // namespace corvane
