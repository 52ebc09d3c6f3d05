#include "desktop/harness/CompositorScreen.h"
#include "desktop/harness/Scene.h"

#include <filesystem>
#include <map>

namespace corvane::desktop {
namespace {

/// What a compositor without words of its own lists for everybody, which tells no frame and no
/// process: a program of that name, and windows by their titles.
constexpr auto readList = R"(
import glob, os, subprocess
def process(program):
    for folder in glob.glob('/proc/[0-9]*'):
        try:
            if open(folder + '/comm').read().strip() != program: continue
            environment = open(folder + '/environ', 'rb').read()
            if os.environ['XDG_RUNTIME_DIR'].encode() in environment: return folder[6:]
        except OSError: pass
    return 0
def listed(*state):
    told = subprocess.run(['wlrctl', 'toplevel', 'list', *state], capture_output=True, text=True)
    return [line.split(': ', 1) for line in told.stdout.splitlines()]
print(0)
front, minimized = listed('state:active'), listed('state:minimized')
for window in listed():
    program, title = window
    # What an X11 client was started as.
    program = program.replace('x-terminal-emulator', 'xterm')
    print(title, process(program), '.' + program, 'somewhere', 'seen' * (window not in minimized),
          'front' * (window in front), title, sep='\t')
)";

class LabwcScreen final : public CompositorScreen {
public:
    explicit LabwcScreen(Surroundings& around) : around_(around) {
        const auto report = around.root + "/report";
        writeFile(report, "#!/bin/sh\n" + std::string(keepXServer) + reportDisplays + '\n');
        std::filesystem::permissions(report, std::filesystem::perms(0755));
        compositor_ =
            startCompositor(around, {"env", "WLR_BACKENDS=headless", "WLR_LIBINPUT_NO_DEVICES=1",
                                     "WLR_RENDERER=pixman", "labwc", "-s", report});
    }
    void act(const Window& window, Deed deed) const override {
        static const std::map<Deed, std::string> words{
            {Deed::comeForward, "focus"},         {Deed::fillScreen, "fullscreen"},
            {Deed::leaveFullScreen, "normalize"}, {Deed::maximize, "maximize"},
            {Deed::minimize, "minimize"},         {Deed::close, "close"}};
        around_.run({"wlrctl", "toplevel", words.at(deed), "title:" + window.title});
    }
    bool tellsProcesses() const override { return false; }
    void place(const Window&, const std::string&) const override {}
    void goTo(int) const override {}
    void savePicture(const std::string& file) const override { around_.run({"grim", file}); }

private:
    std::string told() const override { return around_.run({"python3", "-c", readList}); }

    Surroundings& around_;
    std::unique_ptr<Process> compositor_;
};

} // namespace

std::unique_ptr<Screen> startLabwcScreen(Surroundings& around) {
    return std::make_unique<LabwcScreen>(around);
}

} // namespace corvane::desktop
