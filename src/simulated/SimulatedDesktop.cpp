#include "simulated/SimulatedDesktop.h"

#include "foundation/Text.h"

#include <algorithm>

namespace corvane {

namespace {

class SimulatedDefaults : public UserDefaults {
public:
    explicit SimulatedDefaults(SimulatedDesktop& desktop) : desktop_(desktop) {}

    std::optional<PropertyList> objectForKey(std::string_view key) const override {
        const auto found = desktop_.defaults.find(key);
        return found == desktop_.defaults.end() ? std::nullopt : std::optional(found->second);
    }
    void setObject(std::string_view key, PropertyList value) override {
        desktop_.defaults.insert_or_assign(std::string(key), std::move(value));
    }
    void removeObject(std::string_view key) override { desktop_.defaults.erase(std::string(key)); }
    void removePersistentDomain() override { desktop_.defaults.clear(); }
    bool isUnreadable() const override { return desktop_.defaultsAreUnreadable; }

private:
    SimulatedDesktop& desktop_;
};

const SimulatedApplication* findByPath(const SimulatedDesktop& desktop, std::string_view path) {
    const auto found = std::ranges::find(desktop.applications, path, &SimulatedApplication::path);
    return found == desktop.applications.end() ? nullptr : &*found;
}

class SimulatedApplications : public Applications,
                              public Bundles,
                              public MetadataQuery,
                              public FileIcons {
public:
    explicit SimulatedApplications(SimulatedDesktop& desktop) : desktop_(desktop) {}

    bool openUrl(const Url& url) override {
        desktop_.tell("open " + url.absoluteString());
        if (desktop_.refusedUrls.contains(url.absoluteString())) return false;
        if (!url.isFile()) return urlForApplicationToOpen(url).has_value();
        return findByPath(desktop_, url.path()) ||
               (desktop_.files.exists(url.path()) && urlForApplicationToOpen(url).has_value());
    }

    void openUrl(const Url& url, const Url& applicationUrl, OpenCompletion completion) override {
        desktop_.tell("open " + url.absoluteString() + " with " + applicationUrl.path());
        const auto* application = findByPath(desktop_, applicationUrl.path());
        const auto error =
            application ? application->openError : Error{"The application can't be found."};
        desktop_.queue.async([completion = std::move(completion), error] {
            completion(error ? Result<void>(*error) : Result<void>());
        });
    }

    void activateFileViewerSelecting(const Url& url) override {
        desktop_.tell("reveal " + url.absoluteString());
    }

    std::optional<Url> urlForApplicationToOpen(const Url& url) const override {
        auto key = url.scheme() + ":";
        if (url.isFile()) key = desktop_.files.isDirectory(url.path()) ? "/" : url.pathExtension();
        const auto handler = desktop_.defaultHandlers.find(key);
        return handler == desktop_.defaultHandlers.end()
                   ? std::nullopt
                   : std::optional(Url::fromPath(handler->second));
    }

    std::optional<Url> urlForApplication(const std::string& bundleIdentifier) const override {
        for (const auto& application : desktop_.applications) {
            if (application.bundleIdentifier == bundleIdentifier)
                return Url::fromPath(application.path);
        }
        return std::nullopt;
    }

    std::vector<Url> urlsForApplications(const std::string& bundleIdentifier) const override {
        std::vector<Url> urls;
        for (const auto& application : desktop_.applications) {
            const bool wanted =
                bundleIdentifier.empty() || application.bundleIdentifier == bundleIdentifier;
            if (wanted) urls.push_back(Url::fromPath(application.path));
        }
        return urls;
    }

    std::vector<RunningApplication> runningApplications() const override {
        return desktop_.running;
    }

    bool terminate(const RunningApplication& application) override {
        desktop_.tell("terminate " + std::to_string(application.processIdentifier));
        if (!isThere(application)) return false;
        const auto behaviour = behaviourOf(application);
        if (behaviour == QuitBehaviour::quits) {
            desktop_.queue.async([this, application] { end(application); });
        }
        return behaviour == QuitBehaviour::quits || behaviour == QuitBehaviour::asks;
    }

    bool forceTerminate(const RunningApplication& application) override {
        desktop_.tell("forceTerminate " + std::to_string(application.processIdentifier));
        if (!isThere(application) || behaviourOf(application) == QuitBehaviour::refusesForce) {
            return false;
        }
        end(application);
        return true;
    }

    std::optional<Bundle> open(const std::string& path) const override {
        const auto* application = findByPath(desktop_, path);
        if (!application) return std::nullopt;
        return Bundle{application->bundleIdentifier, application->displayName,
                      application->bundleName};
    }

    std::optional<std::string> bundlePathOfLauncher(const std::string& file) const override {
        for (const auto& application : desktop_.applications) {
            if (application.launcher == file) return application.path;
        }
        return std::nullopt;
    }

    std::optional<std::string> iconForFile(const std::string& path) const override {
        const auto* application = findByPath(desktop_, path);
        return application ? application->icon : std::nullopt;
    }

    std::string mainBundleIdentifier() const override { return programIdentifier; }
    std::optional<std::string> mainBundleInfo(std::string_view key) const override {
        const auto found = desktop_.mainBundleInfo.find(key);
        return found == desktop_.mainBundleInfo.end() ? std::nullopt : std::optional(found->second);
    }
    std::string operatingSystemVersion() const override { return "Simulated 1.0"; }

    std::vector<MetadataItem> results(const std::string& predicateFormat,
                                      const std::string& argument) override {
        desktop_.tell("query " + predicateFormat + " | " + argument);
        const auto found = desktop_.metadata.find(argument);
        return found == desktop_.metadata.end() ? std::vector<MetadataItem>() : found->second;
    }

private:
    QuitBehaviour behaviourOf(const RunningApplication& application) const {
        const auto found = desktop_.quitBehaviours.find(application.processIdentifier);
        return found == desktop_.quitBehaviours.end() ? QuitBehaviour::quits : found->second;
    }

    bool isThere(const RunningApplication& application) {
        if (behaviourOf(application) == QuitBehaviour::vanishes) end(application);
        return std::ranges::any_of(desktop_.running, [&](const RunningApplication& other) {
            return isSame(application, other);
        });
    }

    void end(const RunningApplication& application) {
        std::erase_if(desktop_.running,
                      [&](const RunningApplication& other) { return isSame(application, other); });
        std::erase_if(desktop_.screen.stack, [&](const SimulatedWindow& window) {
            return window.info.ownerPID == application.processIdentifier;
        });
    }

    static bool isSame(const RunningApplication& a, const RunningApplication& b) {
        return a.processIdentifier == b.processIdentifier && a.startTime == b.startTime;
    }

    SimulatedDesktop& desktop_;
};

/// `open` and `mdfind` as far as the simulated desktop has applications for them; other processes
/// can't be started.
class SimulatedTasks : public TaskRunner {
public:
    explicit SimulatedTasks(SimulatedDesktop& desktop) : desktop_(desktop) {}

    Result<TaskResult> run(const std::string& launchPath,
                           const std::vector<std::string>& arguments) override {
        const auto words = launchPath + " " + text::joined(arguments, " ");
        desktop_.tell("task " + words);
        const auto scripted = desktop_.taskResults.find(words);
        if (scripted != desktop_.taskResults.end()) return scripted->second;
        if (launchPath == "/usr/bin/open") return open(arguments);
        if (launchPath == "/usr/bin/mdfind") return find(arguments.front());
        return Error{"The launch path can't be reached."};
    }

private:
    TaskResult open(const std::vector<std::string>& arguments) const {
        const auto option = std::find(arguments.begin(), arguments.end(), "-a");
        if (option == arguments.end() || option + 1 == arguments.end()) return {1, {}};
        const auto& wanted = *(option + 1);
        const bool known = std::ranges::any_of(desktop_.applications, [&](const auto& each) {
            return !each.openError && (each.path == wanted || path::stem(each.path) == wanted);
        });
        return {known ? 0 : 1, {}};
    }

    TaskResult find(const std::string& query) const {
        TaskResult result;
        for (const auto& application : desktop_.applications) {
            const auto name = application.displayName.value_or(path::stem(application.path));
            if (application.isIndexed && query.ends_with("kMDItemDisplayName == '" + name + "'")) {
                result.output += application.path + "\n";
            }
        }
        return result;
    }

    SimulatedDesktop& desktop_;
};

class SimulatedScripts : public ScriptEngine {
public:
    explicit SimulatedScripts(SimulatedDesktop& desktop) : desktop_(desktop) {}

    std::optional<ScriptOutcome> execute(const std::string& source) override {
        desktop_.tell("script " + text::replacingAll(source, "\n", " / "));
        for (const auto& [part, outcome] : desktop_.scriptOutcomes) {
            if (source.find(part) != std::string::npos) return outcome;
        }
        return ScriptOutcome{.hasResult = true, .error = {}};
    }

private:
    SimulatedDesktop& desktop_;
};

class SimulatedAlerts : public Alerts {
public:
    explicit SimulatedAlerts(SimulatedDesktop& desktop) : desktop_(desktop) {}

    AlertResponse runModal(const Alert& alert) override {
        desktop_.tell("alert " + alert.title);
        return answer(alert);
    }

    bool beginSheet(const Alert& alert, std::function<void(AlertResponse)> completion) override {
        if (!desktop_.hasMainWindow) return false;
        desktop_.tell("sheet " + alert.title);
        desktop_.queue.async([completion = std::move(completion), response = answer(alert)] {
            completion(response);
        });
        return true;
    }

private:
    AlertResponse answer(const Alert& alert) {
        desktop_.shownAlerts.push_back(alert);
        const auto found = desktop_.alertAnswers.find(alert.title);
        return found != desktop_.alertAnswers.end()
                   ? found->second
                   : AlertResponse{AlertResponse::firstButton, false};
    }

    SimulatedDesktop& desktop_;
};

class SimulatedApplicationObject : public ApplicationObject,
                                   public Appearance,
                                   public UserNotifications {
public:
    explicit SimulatedApplicationObject(SimulatedDesktop& desktop) : desktop_(desktop) {}

    bool isActive() const override { return desktop_.isActive; }
    bool isRunning() const override { return desktop_.isRunning; }
    void activate() override { desktop_.tell("activate"); }
    std::vector<ApplicationWindow> windows() const override { return desktop_.windows; }
    void makeKeyAndOrderFront(int windowIdentifier) override { tell("key ", windowIdentifier); }
    void orderFront(int windowIdentifier) override { tell("front ", windowIdentifier); }
    void deminiaturize(int windowIdentifier) override { tell("deminiaturize ", windowIdentifier); }
    void openMainWindow() override {
        desktop_.tell("open main window");
        if (desktop_.opensMainWindows) desktop_.windows.push_back({1});
    }
    void openEmptyWindow(const std::string& title, const Rect& content) override {
        tellOfWindow(title, content);
    }
    int openOnboardingWindow(const std::string& title, const Rect& content,
                             std::function<void()> windowWillClose) override {
        tellOfWindow(title, content);
        desktop_.windowWillClose = std::move(windowWillClose);
        desktop_.windows.push_back({int(desktop_.windows.size()) + 1});
        return desktop_.windows.back().identifier;
    }
    void terminate() override { desktop_.tell("terminate"); }

    bool effectiveAppearanceIsDark() const override {
        return chosenAppearance_.value_or(desktop_.systemIsDark);
    }
    void setAppearance(bool dark) override { chosenAppearance_ = dark; }
    ChangeSignal& screenParametersDidChange() override {
        return desktop_.screenParametersDidChange;
    }

    void requestAuthorization(std::function<void(Result<void> granted)> handler) override {
        desktop_.tell("request authorization");
        desktop_.queue.async([this, handler = std::move(handler)] {
            handler(desktop_.notificationsAreDenied
                        ? Result<void>(Error{"Notifications aren't allowed."})
                        : Result<void>());
        });
    }
    void add(const UserNotification& notification) override {
        desktop_.tell("notify " + notification.title + ": " + notification.body);
        desktop_.notifications.push_back(notification);
    }

private:
    void tellOfWindow(const std::string& title, const Rect& content) {
        const auto number = [](double value) { return std::to_string(int(value)); };
        desktop_.tell("open window " + title + " " + number(content.width) + "x" +
                      number(content.height) + " at " + number(content.x) + "," +
                      number(content.y));
    }
    void tell(const char* what, int windowIdentifier) {
        desktop_.tell(what + std::to_string(windowIdentifier));
    }

    SimulatedDesktop& desktop_;
    std::optional<bool> chosenAppearance_;
};

} // namespace

struct SimulatedDesktop::Facilities {
    explicit Facilities(SimulatedDesktop& desktop)
        : defaults(desktop), applications(desktop), tasks(desktop), scripts(desktop),
          alerts(desktop), application(desktop) {}

    SimulatedDefaults defaults;
    SimulatedApplications applications;
    SimulatedTasks tasks;
    SimulatedScripts scripts;
    SimulatedAlerts alerts;
    SimulatedApplicationObject application;
    NotificationCenter notificationCenter;
};

SimulatedDesktop::SimulatedDesktop() : facilities_(std::make_unique<Facilities>(*this)) {}
SimulatedDesktop::~SimulatedDesktop() = default;

void SimulatedDesktop::install(SimulatedApplication application) {
    files.directories.insert(application.path);
    applications.push_back(std::move(application));
}

Platform SimulatedDesktop::platform() {
    return platform(files, bookmarks);
}

Platform SimulatedDesktop::platform(FileSystem& elsewhere, Bookmarks& bookmarksElsewhere) {
    auto& facilities = *facilities_;
    return {{.mainQueue = queue,
             .alerts = facilities.alerts,
             .application = facilities.application,
             .statusBar = statusBar,
             .images = statusBar,
             .appearance = facilities.application,
             .panels = panels},
            {.backgroundQueue = queue.background,
             .diskQueue = queue,
             .clock = queue,
             .fileSystem = elsewhere,
             .userDefaults = facilities.defaults,
             .bundles = facilities.applications,
             .applications = facilities.applications,
             .tasks = facilities.tasks,
             .scripts = facilities.scripts,
             .metadataQuery = facilities.applications,
             .displays = screen,
             .windowList = screen,
             .accessibility = screen,
             .notificationCenter = facilities.notificationCenter,
             .userNotifications = facilities.application,
             .bookmarks = bookmarksElsewhere,
             .fileIcons = facilities.applications}};
}

void SimulatedDesktop::tell(const std::string& line) {
    log.push_back((queue.isInBackground() ? "background " : "") + line);
}

std::string SimulatedDesktop::logged(std::string_view prefix) const {
    std::vector<std::string> lines;
    for (const auto& line : log) {
        if (line.starts_with(prefix)) lines.push_back(line);
    }
    return text::joined(lines, "\n");
}

} // namespace corvane
