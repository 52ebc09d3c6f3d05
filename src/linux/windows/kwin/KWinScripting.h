#pragma once

#include "linux/system/SessionBus.h"
#include "linux/windows/WindowSystem.h"

#include <optional>
#include <string>

namespace corvane::kwin {

/// Asks the KWin of this session, which answers only to scripts: each question loads one, runs it,
/// waits for what it sends back, and unloads it, also where no answer came. Of one thread at a
/// time; each call ends by its deadline.
class Scripting {
public:
    /// The process of the KWin at whose display this session is; 0 where it isn't of this machine
    /// and process space. Nothing where there is none, or another one.
    std::optional<pid_t> compositor(Deadline by);

    /// Puts a question of windows.js, with nothing but numbers and identifiers in it. The answer is
    /// what that text tells; nothing where none comes by then, or one of more than 16 MiB.
    std::optional<std::string> ask(const std::string& question, Deadline by);

    /// What KWin itself says of a window, for versions that don't tell scripts.
    bool isMaximized(const std::string& identifier, Deadline by);

private:
    bool find(Deadline by);
    using Values = std::shared_ptr<GVariant>;
    /// Null for an error and where no answer comes by then. Takes over floating `parameters`.
    Values call(const std::string& name, const std::string& path, const std::string& method,
                GVariant* parameters, Deadline by);
    std::int32_t load(const std::string& file, int spare, Deadline by);
    bool run(std::int32_t number, Deadline by);
    void unload(const std::string& file, Deadline by);

    gio::Ref<GDBusConnection> bus_;
    /// The unique name of KWin on the bus, so that what another one sends is no answer.
    std::string owner_;
    std::optional<pid_t> process_;
    int questions_ = 0;
    /// KWin numbers a script by how many there are. Where one was taken out before, the number may
    /// be another one's, which then is run in place of ours; so after a question with no answer
    /// some are loaded that are never run.
    int spares_ = 0;
    /// Where a script is found on the bus; it depends on the version.
    std::string scripts_ = "/Scripting/Script";
};

} // namespace corvane::kwin
