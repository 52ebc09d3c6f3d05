#pragma once

#include "desktop/harness/Screen.h"

#include <map>

namespace corvane::desktop {

/// A Wayland compositor: one answer tells all of its windows.
class CompositorScreen : public Screen {
public:
    std::vector<Window> windows() const override;
    bool isViewable(const Window& window) const override;
    std::string look(const Window& window) const override;
    std::string front() const override;
    void act(const Window& window, Deed deed) const override;
    void place(const Window& window, const std::string& frame) const override;
    int workspace() const override;
    void savePicture(const std::string& file) const override;
    bool hasHands() const override { return false; }
    std::vector<std::string> panel() const override { return {"swaybg", "-c", "#345678"}; }
    pid_t server() const override { return compositor_->pid(); }

protected:
    /// What is told for a deed, and for a placement with $1 to $4 for the frame's numbers.
    struct Words {
        std::map<Deed, std::string> deeds;
        std::string placement;
    };
    CompositorScreen(Surroundings& around, Words words)
        : around_(around), words_(std::move(words)) {}
    /// Makes a script that tells where the displays are, once it has done what comes before.
    std::string report(const std::string& before) const;
    /// Starts a compositor that starts that script.
    void start(const std::vector<std::string>& command);
    /// The number of the workspace, and then a line for each window, with a tab between: id,
    /// process, class, look, "seen" or "", "front" or "", title.
    virtual std::string told() const = 0;
    virtual void tell(const Window& window, const std::string& words) const = 0;

    /// For one whose X server ends with its last client, and lets a window escape that comes before
    /// its manager.
    static constexpr auto keepXServer =
        "xprop -root -spy >/dev/null & "
        "until xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 0x; do sleep 0.05; done; ";
    /// Starts one of wlroots without a screen.
    static std::vector<std::string> headless() {
        return {"env", "WLR_BACKENDS=headless", "WLR_LIBINPUT_NO_DEVICES=1", "WLR_RENDERER=pixman"};
    }

    Surroundings& around_;
    std::unique_ptr<Process> compositor_;

private:
    struct Line {
        Window window;
        std::string look;
        bool isSeen = false, isInFront = false;
    };
    std::vector<Line> lines() const;
    Line find(const Window& window) const;

    const Words words_;
};

} // namespace corvane::desktop
