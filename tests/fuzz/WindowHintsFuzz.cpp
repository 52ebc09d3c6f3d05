#include "fuzz/Fuzz.h"
#include "linux/running/ApplicationIdentity.h"
#include "linux/windows/x11/X11Connection.h"

using namespace corvane;

namespace {

InstalledApplication installed(const std::string& id) {
    InstalledApplication application;
    application.desktopId = id + ".desktop";
    application.bundleIdentifier = id;
    application.desktopFile = "/usr/share/applications/" + application.desktopId;
    application.startupWmClass = id;
    application.executable = "/usr/bin/" + id;
    application.isShown = true;
    return application;
}

} // namespace

/// Properties as clients may have set them: five texts a window, then a number. Each window is in
/// the share of one application, in its place, whatever it says of itself.
void feed(std::string_view text) {
    static const std::vector<InstalledApplication> all{
        installed("writer"), installed("org.x.Office.calc"), installed("web")};
    x11::Property property{.type = 1, .format = 8, .bytes = std::string(text)};
    const auto texts = property.texts();
    expect(property.text() == (texts.empty() ? "" : texts.front()));
    property.format = 32;
    const auto numbers = property.numbers();
    expect(numbers.size() <= text.size() / sizeof(std::uint32_t));

    std::vector<ManagedWindow> windows;
    for (std::size_t i = 0; i + 5 <= texts.size() && windows.size() < 50; i += 5) {
        ManagedWindow window{.window = {windows.size() + 1, 1}};
        window.hints = {texts[i], texts[i + 1], texts[i + 2], texts[i + 3], texts[i + 4]};
        if (windows.size() < numbers.size()) {
            const auto number = numbers[windows.size()];
            if (number % 2 == 0) window.owner = number % 60;
            window.kind = static_cast<WindowKind>(number / 2 % 4);
            window.skipsTaskbar = number % 7 == 0;
        }
        windows.push_back(std::move(window));
    }
    ProcessFacts process;
    if (!texts.empty()) process.sandboxIdentifier = texts.back();
    std::size_t shared = 0;
    for (const auto& share : sharesOf(process, windows, all)) {
        std::uint64_t before = 0;
        for (const auto& window : share.windows) {
            expect(window.window.number > before);
            before = window.window.number;
        }
        shared += share.windows.size();
    }
    expect(shared == windows.size());
}
