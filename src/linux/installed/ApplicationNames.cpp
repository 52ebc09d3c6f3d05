#include "linux/installed/ApplicationNames.h"

#include "foundation/Text.h"
#include "foundation/Url.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/system/ProcessFacts.h"

#include <algorithm>
#include <array>

namespace corvane {
namespace {

using Fits = bool (*)(const InstalledApplication&, std::string_view name);

bool same(std::string_view a, std::string_view b) {
    return text::equalsIgnoringCase(a, b);
}

constexpr std::array<Fits, 6> waysToName{
    [](const InstalledApplication& a, std::string_view name) {
        return same(a.storedName(), name) || same(path::lastComponent(a.bundlePath), name);
    },
    [](const InstalledApplication& a, std::string_view name) {
        return std::ranges::any_of(a.formerNames,
                                   [&](const auto& each) { return same(each, name); });
    },
    [](const InstalledApplication& a, std::string_view name) { return same(a.displayName, name); },
    [](const InstalledApplication& a, std::string_view name) { return same(a.name, name); },
    [](const InstalledApplication& a, std::string_view name) {
        return same(a.desktopId, name) || same(a.bundleIdentifier, name);
    },
    [](const InstalledApplication& a, std::string_view name) {
        const auto program = path::lastComponent(a.executable);
        return same(program, name) && !isInterpreter(program);
    },
};

} // namespace

std::optional<InstalledApplication> applicationNamed(const InstalledApplications& installed,
                                                     std::string_view name) {
    if (name.empty()) return std::nullopt;
    if (name.starts_with('/')) return installed.byBundlePath(name);
    for (const auto& applications : {installed.visible(), installed.all()}) {
        for (const auto fits : waysToName) {
            const auto found = std::ranges::find_if(
                applications, [&](const auto& application) { return fits(application, name); });
            if (found != applications.end()) return *found;
        }
    }
    for (const auto standing : {finderPath, terminalPath, browserPath}) {
        if (same(path::stem(standing), name)) return installed.byBundlePath(standing);
    }
    return std::nullopt;
}

} // namespace corvane
