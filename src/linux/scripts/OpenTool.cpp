#include "linux/scripts/OpenTool.h"

#include "foundation/Diagnostics.h"
#include "linux/installed/ApplicationNames.h"
#include "linux/running/ApplicationOpener.h"

#include <filesystem>
#include <optional>

namespace corvane {
namespace {

struct Options {
    std::string application;
    bool isNew = false;
    std::vector<std::string> items;
    std::vector<std::string> arguments;
};

Result<Options> parse(const std::vector<std::string>& words) {
    Options options;
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (*word == "--args") {
            options.arguments.assign(word + 1, words.end());
            break;
        }
        if (*word == "-a") {
            if (++word == words.end()) return Error{"-a needs an application."};
            options.application = *word;
        } else if (*word == "--new") {
            options.isNew = true;
        } else if (word->starts_with('-')) {
            return Error{"Unknown option " + *word + "."};
        } else {
            options.items.push_back(*word);
        }
    }
    return options;
}

/// The absolute path of something that exists, or an address.
Result<Url> urlOf(const InstalledApplications& installed, const std::string& item) {
    const auto url = item.starts_with('/') ? Url::fromPath(item) : Url::parse(item);
    if (!url || !url->hasScheme()) return Error{item + " is neither a path nor an address."};
    std::error_code error;
    const bool isMissing = url->isFile() && !std::filesystem::exists(url->path(), error) &&
                           !installed.byBundlePath(url->path());
    if (isMissing) return Error{"The file " + url->path() + " does not exist."};
    return *url;
}

Result<std::vector<Url>> urlsOf(const InstalledApplications& installed,
                                const std::vector<std::string>& items) {
    std::vector<Url> urls;
    for (const auto& item : items) {
        const auto url = urlOf(installed, item);
        if (!url) return url.error();
        urls.push_back(*url);
    }
    return urls;
}

Result<void> openWith(const ApplicationOpener& opener, const InstalledApplication& application,
                      const std::vector<Url>& urls, const Options& options) {
    std::vector<std::string> uris;
    for (const auto& url : urls) {
        // A bundle is nothing that another application could open.
        const bool isBundle = url.isFile() && opener.installed().byBundlePath(url.path());
        if (!isBundle) uris.push_back(url.absoluteString());
    }
    if (uris.empty() && options.arguments.empty() && !options.isNew) {
        return opener.openApplication(application);
    }
    return opener.launch(application, uris, options.arguments);
}

Result<void> run(const ApplicationOpener& opener, const std::vector<std::string>& arguments) {
    const auto options = parse(arguments);
    if (!options) return options.error();
    const auto& installed = opener.installed();
    const auto urls = urlsOf(installed, options->items);
    if (!urls) return urls.error();
    if (const auto application = applicationNamed(installed, options->application))
        return openWith(opener, *application, *urls, *options);
    return Error{"Unable to find application named '" + options->application + "'."};
}

} // namespace

TaskResult runOpenTool(const ApplicationOpener& opener, const std::vector<std::string>& arguments) {
    const auto opened = run(opener, arguments);
    if (!opened) diagnostic({"open: ", opened.error().localizedDescription});
    return {.status = opened ? 0 : 1, .output = ""};
}

} // namespace corvane
