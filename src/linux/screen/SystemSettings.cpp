#include "linux/screen/SystemSettings.h"

#include "linux/windows/WindowSystem.h"
#include "platform/Alerts.h"

namespace corvane {

bool SystemSettings::areMeantBy(const Url& url) {
    return url.scheme() == "x-apple.systempreferences";
}

void SystemSettings::open() {
    const auto abilities = windows_.abilities(halfASecondFromNow());
    const auto message =
        abilities.placesWindows
            ? std::string(
                  "Nothing has to be allowed on this desktop: Corvane can save and restore window layouts.")
            : abilities.whatToDoFirst;
    alerts_.runModal({.title = "Window Layouts on This Desktop",
                      .message = message,
                      .style = AlertStyle::informational,
                      .buttons = {"OK"}});
}

} // namespace corvane
