#include "linux/scripts/OpenTool.h"

#include "foundation/Diagnostics.h"
#include "linux/installed/ApplicationNames.h"
#include "linux/running/ApplicationOpener.h"

#include <filesystem>
#include <optional>

namespace corvane {
namespace {

struct Options {
    std::optional<std::string> application;
    std::optional<std::string> identifier;
    bool isNew = false;
    bool reveals = false;
    std::vector<std::string> items;
    /// Present, though maybe empty, where "--args" was given.
    std::optional<std::vector<std::string>> arguments;
};

Result<Options> parse(const std::vector<std::string>& arguments) {
    Options options;
    for (auto word = arguments.begin(); word != arguments.end(); ++word) {
        if (*word == "--args") {
            options.arguments.emplace(word + 1, arguments.end());
            break;
        }
        if (*word == "-a" || *word == "-b") {
            auto& value = *word == "-a" ? options.application : options.identifier;
            if (++word == arguments.end()) return Error{"An option needs a value."};
            value = *word;
        } else if (*word == "-n" || *word == "--new") {
            options.isNew = true;
        } else if (*word == "-R" || *word == "--reveal") {
            options.reveals = true;
        } else if (word->starts_with('-')) {
            return Error{"Unknown option " + *word + "."};
        } else {
            options.items.push_back(*word);
        }
    }
    if (options.application && options.identifier) return Error{"-a and -b exclude each other."};
    return options;
}

/// A path of something that exists, or an address.
Result<Url> urlOf(const InstalledApplications& installed, const std::string& item) {
    std::error_code error;
    const auto path = std::filesystem::absolute(item, error).string();
    if (!error && (std::filesystem::exists(path, error) || installed.byBundlePath(path))) {
        return Url::fromPath(path);
    }
    const auto url = item.starts_with('/') ? std::nullopt : Url::parse(item);
    if (!url || !url->hasScheme()) return Error{"The file " + path + " does not exist."};
    if (url->isFile()) return urlOf(installed, url->path());
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

std::optional<Error> openWith(const ApplicationOpener& opener,
                              const InstalledApplication& application, const std::vector<Url>& urls,
                              const Options& options) {
    std::vector<std::string> uris;
    for (const auto& url : urls) {
        // A bundle is nothing that another application could open.
        const bool isBundle = url.isFile() && opener.installed().byBundlePath(url.path());
        if (!isBundle) uris.push_back(url.absoluteString());
    }
    const auto arguments = options.arguments.value_or(std::vector<std::string>{});
    if (uris.empty() && arguments.empty() && !options.isNew) {
        return opener.openApplication(application);
    }
    return opener.launch(application, uris, arguments);
}

std::optional<Error> openEach(const ApplicationOpener& opener, const std::vector<Url>& urls,
                              const Options& options) {
    if (urls.empty()) return Error{"There is nothing to open."};
    std::optional<Error> firstError;
    for (const auto& url : urls) {
        std::optional<Error> error;
        if (options.reveals) {
            opener.reveal(url);
        } else if (const auto handler = opener.handlerOf(url)) {
            error = openWith(opener, *handler, {url}, options);
        } else {
            error = Error{"No application opens " + url.absoluteString() + "."};
        }
        if (error && !firstError) firstError = error;
    }
    return firstError;
}

std::optional<Error> run(const ApplicationOpener& opener,
                         const std::vector<std::string>& arguments) {
    const auto options = parse(arguments);
    if (!options) return options.error();
    const auto& installed = opener.installed();
    const auto urls = urlsOf(installed, options->items);
    if (!urls) return urls.error();
    if (!options->application && !options->identifier) return openEach(opener, *urls, *options);

    const auto application = options->application
                                 ? applicationNamed(installed, *options->application)
                                 : installed.byBundleIdentifier(*options->identifier);
    if (!application) {
        return Error{"Unable to find application named '" +
                     options->application.value_or(options->identifier.value_or("")) + "'."};
    }
    return openWith(opener, *application, *urls, *options);
}

} // namespace

TaskResult runOpenTool(const ApplicationOpener& opener, const std::vector<std::string>& arguments) {
    const auto error = run(opener, arguments);
    if (error) diagnostic({"open: ", error->localizedDescription});
    return {.status = error ? 1 : 0, .output = ""};
}

} // namespace corvane
