#pragma once

#include "foundation/Url.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class ScriptEngine;
class TaskRunner;

/// How a browser is told to open a new tab.
enum class BrowserFamily { chromium, safari, firefox };

/// Recognised by letters in the browser's name, in any case; nothing for an unknown family.
std::optional<BrowserFamily> browserFamily(std::string_view browserName);

/// Puts pages into new tabs of browsers that may be open already. Each operation waits for its
/// command; false means that nothing was opened. Main thread.
class Browsers {
public:
    Browsers(TaskRunner& tasks, ScriptEngine& scripts) : tasks_(tasks), scripts_(scripts) {}

    /// With no name, and for an unknown family: false.
    bool openURLInNewTab(const Url& url, const std::optional<std::string>& browserName);
    bool openInChromiumFamilyNewTab(const Url& url, const std::string& browserName);
    bool openInFirefoxNewTab(const Url& url, const std::string& browserName);
    bool openInSafariNewTab(const Url& url);

private:
    bool runNewTabCommand(const std::string& browserName,
                          const std::vector<std::string>& arguments);

    TaskRunner& tasks_;
    ScriptEngine& scripts_;
};

} // namespace corvane
