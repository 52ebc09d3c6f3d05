#include "desktop/harness/CompositorScreen.h"

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
    explicit LabwcScreen(Surroundings& around)
        : CompositorScreen(around, {{{Deed::comeForward, "focus"},
                                     {Deed::fillScreen, "fullscreen"},
                                     {Deed::leaveFullScreen, "normalize"},
                                     {Deed::maximize, "maximize"},
                                     {Deed::minimize, "minimize"},
                                     {Deed::close, "close"}},
                                    ""}) {
        auto command = headless();
        command.insert(command.end(), {"labwc", "-s", report(keepXServer)});
        start(command);
    }
    bool tellsProcesses() const override { return false; }
    void goTo(int) const override {}

private:
    std::string told() const override { return around_.run({"python3", "-c", readList}); }
    void tell(const Window& window, const std::string& word) const override {
        around_.run({"wlrctl", "toplevel", word, "title:" + window.title});
    }
};

} // namespace

std::unique_ptr<Screen> startLabwcScreen(Surroundings& around) {
    return std::make_unique<LabwcScreen>(around);
}

} // namespace corvane::desktop
