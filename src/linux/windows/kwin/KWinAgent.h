#pragma once

#include "linux/windows/Agent.h"
#include "linux/windows/CompositorOnBus.h"
#include "linux/windows/kwin/OutputOrder.h"

#include <optional>
#include <string>

namespace corvane::kwin {

/// Asks the KWin of this session, of Plasma 5.27 or 6, which answers only to scripts: each question
/// loads windows.js, runs it, waits for what it sends back, and unloads it, also where no answer
/// came.
class KWinAgent final : public Agent {
public:
    std::optional<pid_t> compositor(Deadline by) override { return kwin_.process(by); }
    pid_t speaker() const override { return kwin_.known(); }
    std::optional<std::string> list(Deadline by) override { return ask("list()", by); }
    std::optional<std::string> find(const std::string& id, Deadline by) override;
    std::optional<std::string> monitors(Deadline by) override { return ask("monitors()", by); }
    /// As the user ordered the outputs; else the one at the origin.
    std::optional<PixelPoint> primaryOrigin(Deadline by) override {
        return kwin::primaryOrigin(by).value_or(PixelPoint());
    }
    std::optional<std::string> act(const Deed& deed, Deadline by) override;
    bool isMaximized(const std::string& id, Deadline by) override;
    std::string desktop() const override { return "KDE Plasma (Wayland)"; }
    std::string whatToDoFirst(Deadline by) override;

private:
    /// Puts a question of windows.js, with nothing but numbers and identifiers in it. Nothing also
    /// for an answer of more than 16 MiB.
    std::optional<std::string> ask(const std::string& question, Deadline by);
    std::int32_t load(const std::string& file, int spare, Deadline by);
    bool run(std::int32_t number, Deadline by);
    void unload(const std::string& file, Deadline by);

    CompositorOnBus kwin_{"org.kde.KWin"};
    int questions_ = 0;
    /// KWin numbers a script by how many there are. Where one was taken out before, the number may
    /// be another one's, which then is run in place of ours; so after a question with no answer
    /// some are loaded that are never run.
    int spares_ = 0;
    /// Where a script is found on the bus; it depends on the version.
    std::string scripts_ = "/Scripting/Script";
};

} // namespace corvane::kwin
