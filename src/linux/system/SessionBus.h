#pragma once

#include "foundation/Result.h"
#include "linux/system/Gio.h"

#include <chrono>
#include <optional>
#include <string>

namespace corvane {

/// Whether the session has a message bus of its own. Connecting where it has none would start one.
bool hasSessionBus();
/// The session's message bus, or nothing where the session has none: none is started for us.
gio::Ref<GDBusConnection> sessionBus();
/// A connection of the caller's own, opened anew: the common one stays closed as long as anyone
/// holds it, where a bus has ended and another has come.
gio::Ref<GDBusConnection> ownConnectionToSessionBus();

struct BusCall {
    std::string name;
    std::string path;
    std::string interface;
    std::string method;
};

/// Calls and waits for the answer, at most five seconds. With a time to wait of its own, an answer
/// that is later counts as one without an error. Takes over floating `parameters`. Any thread.
Result<void> callOnBus(GDBusConnection* bus, const BusCall& call, GVariant* parameters,
                       std::optional<std::chrono::milliseconds> wait = {});

} // namespace corvane
