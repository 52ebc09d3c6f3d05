#include "windows/MemoryWindowSystem.h"
#include "windows/WindowSession.h"

#include <unistd.h>

namespace corvane {
namespace {

class MemorySession : public WindowSession {
public:
    WindowSystem& system() override { return system_; }
    bool has(Feature feature) const override { return feature != Feature::shading; }

    pid_t show(const ClientWishes& wishes) override {
        // Only the number counts: nobody looks for the process behind it.
        const pid_t process = ++lastProcess_;
        show(wishes, wishes.title, process);
        if (!wishes.dialog.empty()) {
            const auto owner = system_.clients.back().window.window.number;
            show({}, wishes.dialog, process).owner = owner;
        }
        return process;
    }
    std::string seen(const WindowRef& window) override {
        const auto* client = system_.find(window);
        return client ? frameText(client->window.frame) : "gone";
    }
    void act(const WindowRef& window, ByHand deed) override {
        auto& client = *system_.find(window);
        switch (deed) {
        case ByHand::maximize:
            return system_.maximize(client, true);
        case ByHand::fillScreen:
            return system_.fillScreen(client, true);
        case ByHand::minimize:
            client.window.isMinimized = true;
            return;
        case ByHand::move:
            client.window.frame.origin = {333, 222};
            return;
        case ByHand::tile:
            client.window.isTiled = true;
            return;
        case ByHand::toOtherWorkspace:
            client.window.workspace = "2";
            return;
        default:
            return;
        }
    }
    void stop(Part part, const WindowRef& window) override { stopOrGoOn(part, window, true); }
    void goOn(Part part, const WindowRef& window) override { stopOrGoOn(part, window, false); }
    void end() override {
        system_.isThere = false;
        system_.clients.clear();
    }
    void startAgain() override { system_.isThere = true; }
    void addPanel() override {
        auto& window = show({}, "panel", getpid());
        window.kind = WindowKind::dock;
        window.frame = {{0, 0}, {1440, 30}};
        system_.screens[0].workArea = {{0, 30}, {1440, 870}};
    }
    void addSecondMonitor(double) override {
        system_.screens.push_back({{{1440, 0}, {1440, 900}}, {{1440, 0}, {1440, 900}}});
    }

private:
    ManagedWindow& show(const ClientWishes& wishes, const std::string& title, pid_t process) {
        ManagedWindow window{.window = {.process = process}, .title = title};
        window.frame = {{100, 100}, wishes.size};
        window.canBeAskedToClose = wishes.atClose != ClientWishes::AtClose::takesNoRequest;
        auto& shown = system_.show(window);
        auto& client = system_.clients.back();
        client.least = wishes.least;
        client.step = wishes.step;
        client.ignoresClose = wishes.atClose == ClientWishes::AtClose::ignores;
        return shown;
    }
    void stopOrGoOn(Part part, const WindowRef& window, bool stopped) {
        switch (part) {
        case Part::client:
            system_.find(window)->hasStopped = stopped;
            return;
        case Part::manager:
            system_.managerHasStopped = stopped;
            return;
        case Part::server:
            system_.serverHasStopped = stopped;
            return;
        }
    }

    MemoryWindowSystem system_;
    pid_t lastProcess_ = 1000;
};

} // namespace

std::unique_ptr<WindowSession> startMemorySession() {
    return std::make_unique<MemorySession>();
}

} // namespace corvane
