#include "linux/screen/SystemSettings.h"

#include "linux/windows/WindowSystem.h"
#include "platform/Alerts.h"

namespace corvane {

bool SystemSettings::areMeantBy(const Url& url) {
    return url.scheme() == "x-apple.systempreferences";
}

void SystemSettings::open() {
    constexpr auto patience = std::chrono::seconds(2);
    const auto message =
        windows_.isReady(halfASecondFromNow())
            ? std::string(
                  "Nothing has to be allowed on this desktop: Corvane can save and restore window layouts.")
            : windows_.switchOn(std::chrono::steady_clock::now() + patience);
    alerts_.runModal({.title = "Window Layouts on This Desktop",
                      .message = message,
                      .style = AlertStyle::informational,
                      .buttons = {"OK"}});
}

} // namespace corvane
