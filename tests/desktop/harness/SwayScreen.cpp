#include "desktop/harness/CompositorScreen.h"
#include "desktop/harness/Scene.h"

#include <csignal>
#include <filesystem>
#include <stdexcept>

#include <unistd.h>

namespace corvane::desktop {
namespace {

namespace fs = std::filesystem;

constexpr uid_t nobody = 65534;

constexpr auto readTree = R"(
import json, sys
def walk(node, place):
    if node['type'] == 'workspace': place = node['name']
    if node.get('pid'): yield node, place
    for child in node['nodes'] + node['floating_nodes']: yield from walk(child, place)
root = json.load(sys.stdin)
seen = [each['current_workspace'] for each in root['nodes'] if each.get('current_workspace')]
print(int(seen[0]) - 1)
for node, place in walk(root, ''):
    box, bar = node['rect'], node['deco_rect']['height']
    print(node['id'], node['pid'],
          '.' + (node.get('app_id') or node.get('window_properties', {}).get('class', '')),
          f"{box['x']},{box['y'] - bar} {box['width']}x{box['height'] + bar}"
          + ' fullscreen' * (node['fullscreen_mode'] > 0),
          'seen' * (place in seen), 'front' * node['focused'], node['name'], sep='\t')
)";

/// Its user has everything float.
class SwayScreen final : public CompositorScreen {
public:
    explicit SwayScreen(Surroundings& around)
        : CompositorScreen(
              around, {{{Deed::comeForward, "focus"},
                        {Deed::fillScreen, "fullscreen enable"},
                        {Deed::leaveFullScreen, "fullscreen disable"},
                        {Deed::maximize,
                         "resize set width 1440 px height 900 px, move absolute position 0 0"},
                        {Deed::minimize, "move scratchpad"},
                        {Deed::close, "kill"},
                        {Deed::move, "move absolute position 333 px 222 px"},
                        {Deed::tile, "floating disable"},
                        {Deed::toOtherWorkspace, "move container to workspace 2"}},
                       "resize set width $3 px height $4 px, move absolute position $1 px $2 px"}) {
        const auto config = around.root + "/sway.config";
        writeFile(config,
                  "output HEADLESS-1 resolution 1440x900 position 0 0\n"
                  "output HEADLESS-2 resolution 1440x900 position 1440 0\n"
                  "for_window [app_id=\".*\"] floating enable\n"
                  "for_window [class=\".*\"] floating enable\n"
                  "exec " +
                      report("xhost +si:localuser:root >/dev/null; " + std::string(keepXServer)) +
                      "\n");
        auto command = headless();
        // It doesn't run as root.
        if (geteuid() == 0) {
            command.insert(command.end(),
                           {"setpriv", "--reuid", std::to_string(nobody), "--regid",
                            std::to_string(nobody), "--clear-groups", "--pdeathsig", "TERM"});
            const auto runtime = around.root + "/runtime";
            fs::permissions(around.root, fs::perms(0755));
            if (chown(runtime.c_str(), nobody, nobody) != 0)
                throw std::runtime_error("can't give away " + runtime);
        }
        command.insert(command.end(), {"sway", "-c", config});
        start(command);
        for (const auto& entry : fs::directory_iterator(around.root + "/runtime")) {
            if (entry.path().filename().string().starts_with("sway-ipc"))
                around.set("SWAYSOCK", entry.path());
        }
        seeAnXWindow();
    }
    bool tiles() const override { return true; }
    void goTo(int workspace) const override {
        around_.run({"swaymsg", "workspace number " + std::to_string(workspace + 1)});
    }

private:
    std::string told() const override {
        return around_.run({"sh", "-c", "swaymsg -t get_tree | python3 -c \"$0\"", readTree});
    }
    /// On a busy machine the first one may never come to be listed.
    void seeAnXWindow() const {
        for (bool isSeen = false; !isSeen;) {
            const auto first = around_.start({"xeyes"});
            isSeen = comesTrue([this] { return !windows().empty(); }, 3);
            first->signal(SIGTERM);
            first->waitForEnd();
        }
        comesTrue([this] { return windows().empty(); });
    }
    void tell(const Window& window, const std::string& words) const override {
        around_.run({"swaymsg", "[con_id=" + window.id + "] " + words});
    }
};

} // namespace

std::unique_ptr<Screen> startSwayScreen(Surroundings& around) {
    return std::make_unique<SwayScreen>(around);
}

} // namespace corvane::desktop
