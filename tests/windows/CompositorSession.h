#pragma once

#include "linux/windows/WindowSystems.h"
#include "machine/XDisplay.h"
#include "windows/WindowSession.h"

#include <filesystem>
#include <map>

namespace corvane {

/// A Wayland compositor without a screen, with a session bus and clients of its own.
class CompositorSession : public WindowSession {
public:
    WindowSystem& system() override { return *system_; }
    pid_t show(const ClientWishes& wishes) override {
        if (wishes.atClose == ClientWishes::AtClose::takesNoRequest) {
            letXClientsIn();
            if (!probe_) probe_.emplace();
            const auto window = probe_->make({200, 200, 300, 200});
            probe_->set(window, "_NET_WM_NAME", wishes.title, 8, probe_->atom("UTF8_STRING"));
            probe_->set(window, "WM_CLASS", wishes.title + '\0' + wishes.title + '\0');
            probe_->show(window);
            return getpid();
        }
        return start(clientWords(wishes));
    }
    std::map<std::string, pid_t> showOthers() override {
        letXClientsIn();
        return {{"client side", start({"mousepad", "--disable-server"})},
                {"on X11", start({"xterm", "-e", "cat"})}};
    }
    std::map<std::string, pid_t> showConfined() override {
        letXClientsIn();
        const auto confined = [this](std::vector<std::string> words) {
            words.insert(words.begin(), {"bwrap", "--unshare-pid", "--as-pid-1", "--dev-bind", "/",
                                         "/", "--proc", "/proc"});
            return start(words);
        };
        return {{"native", confined(clientWords({.title = "native"}))},
                {"on X11", confined({"xterm", "-T", "on X11", "-e", "cat"})}};
    }
    void stop(Part part, const WindowRef& window) override { signal(part, window, SIGSTOP); }
    void goOn(Part part, const WindowRef& window) override { signal(part, window, SIGCONT); }
    void end() override {
        clients_.clear();
        compositor_.reset();
    }
    void startAgain() override { run(); }
    void addPanel() override {
        machine::write(folder_ + "/bar", R"({"height": 30})");
        start({"waybar", "-c", folder_ + "/bar"});
    }

protected:
    CompositorSession() {
        // So that an ordinary user comes to the folder of the session below it.
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
        for (const auto& each :
             {std::filesystem::path(folder_), std::filesystem::path(folder_).parent_path()})
            std::filesystem::permissions(each, std::filesystem::perms(0755));
        std::filesystem::create_directory(runtime_);
        std::filesystem::permissions(runtime_, std::filesystem::perms(0700));
        set("XDG_RUNTIME_DIR", runtime_);
        set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + runtime_ + "/bus");
        set("QT_QPA_PLATFORM", "wayland");
        set("LIBGL_ALWAYS_SOFTWARE", "1");
        set("NO_AT_BRIDGE", "1");
        set("GSETTINGS_BACKEND", "memory");
        auto bus = world::busCommand(machine::place("chosen"));
        bus.insert(bus.end(), {"--nopidfile", "--address=unix:path=" + runtime_ + "/bus"});
        bus_.emplace(bus);
        EXPECT_TRUE(
            machine::comesTrue([this] { return std::filesystem::exists(runtime_ + "/bus"); }));
    }
    void set(const std::string& name, const std::string& value) {
        variables_[name].reset();
        variables_[name] = std::make_unique<machine::ScopedVariable>(name, value);
    }
    /// A shell command that becomes the compositor, which writes its X display down.
    void run(const std::string& command) {
        std::filesystem::remove(display());
        compositor_.emplace(
            std::vector<std::string>{"sh", "-c",
                                     "unset WAYLAND_DISPLAY DISPLAY SWAYSOCK; exec " + command +
                                         " >" + folder_ + "/log 2>&1"});
        const auto isThere = [this] { return isUp() && !machine::read(display()).empty(); };
        // A busy machine takes its time.
        EXPECT_TRUE(machine::comesTrue(isThere) || machine::comesTrue(isThere));
        const auto words = text::words(machine::read(display()));
        set("DISPLAY", words.at(0));
        if (words.size() > 1) set("XAUTHORITY", words[1]);
    }
    std::string display() const { return runtime_ + "/display"; }
    virtual void run() = 0;
    /// Where this process isn't of the user that the compositor runs as.
    virtual void letXClientsIn() {}
    virtual bool isUp() = 0;
    pid_t start(const std::vector<std::string>& words) {
        return clients_.emplace_back(std::make_unique<machine::Program>(words))->id();
    }

    const std::string folder_ = machine::place("compositor");
    const std::string runtime_ = folder_ + "/runtime";
    std::unique_ptr<WindowSystem> system_;

private:
    void signal(Part part, const WindowRef& window, int signal) {
        const auto process = part == Part::client ? window.process : compositor_->id();
        ASSERT_GT(process, 0);
        kill(process, signal);
    }

    std::map<std::string, std::unique_ptr<machine::ScopedVariable>> variables_;
    std::optional<machine::Program> bus_;
    std::optional<machine::Program> compositor_;
    std::vector<std::unique_ptr<machine::Program>> clients_;
    std::optional<machine::OwnWindows> probe_;
};

} // namespace corvane
