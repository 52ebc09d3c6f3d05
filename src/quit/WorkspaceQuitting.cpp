#include "core/WorkspaceStore.h"
#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "quit/RunningApplicationMatching.h"

#include <algorithm>

namespace corvane {

namespace {

using Names = std::vector<std::string>;
using List = std::vector<RunningApplication>;

constexpr double summaryDelay = 1.0;
constexpr std::string_view finderIdentifier = "com.apple.finder";

void insert(const std::string& name, Names& names) {
    if (std::ranges::count(names, name) == 0) names.push_back(name);
}

std::vector<Resource> activeResources(const Workspace& workspace) {
    std::vector<Resource> active;
    std::ranges::copy_if(workspace.resources, std::back_inserter(active), [](const auto& resource) {
        return resource.enabled && resource.type != ResourceType::separator;
    });
    return active;
}

Names identifiersOf(const std::vector<Resource>& resources) {
    Names identifiers;
    for (const auto& resource : resources) {
        if (resource.bundleIdentifier) insert(*resource.bundleIdentifier, identifiers);
    }
    return identifiers;
}

/// The regular applications besides this program.
List quittableApplications(const Applications& applications, const Bundles& bundles) {
    auto list = applications.runningApplications();
    std::erase_if(list, [own = bundles.mainBundleIdentifier()](const auto& application) {
        return !application.isRegular() || application.bundleIdentifier == own;
    });
    return list;
}

bool hasOneOf(const Names& identifiers, const RunningApplication& application) {
    return std::ranges::any_of(allIdentifiers(application), [&](const auto& identifier) {
        return std::ranges::count(identifiers, identifier) > 0;
    });
}

bool isFinder(const RunningApplication& application) {
    return std::ranges::count(allIdentifiers(application), finderIdentifier) > 0;
}

/// The first name of the set that means the application by one of its names.
const std::string* matchedName(const Names& names, const RunningApplication& application) {
    if (const auto* matched = matchesAppNameSet(names, shownName(application))) return matched;
    for (const auto& other : application.otherNames) {
        if (const auto* matched = matchesAppNameSet(names, other.name)) return matched;
    }
    return nullptr;
}

std::string withIdentifier(const RunningApplication& application) {
    return shownName(application) + " (" + allIdentifiers(application).front() + ")";
}

/// Those that an identifier or a name means.
List belonging(List list, const Names& identifiers, const Names& names, bool tellsMatchedName) {
    std::erase_if(list, [&](const RunningApplication& application) {
        if (hasOneOf(identifiers, application)) {
            diagnostic({"   Found app by bundle ID: ", withIdentifier(application)});
            return false;
        }
        const auto name = shownName(application);
        const auto* matched = matchedName(names, application);
        if (!matched) return true;
        diagnostic({"   Found app by name matching: ", name, tellsMatchedName ? " matches " : "",
                    tellsMatchedName ? *matched : ""});
        return false;
    });
    return list;
}

struct QuitCounts {
    int graceful = 0;
    int forced = 0;
};

/// Asks each, and ends at once what can't be asked.
QuitCounts quit(const List& list, Applications& applications) {
    QuitCounts counts;
    for (const auto& application : list) {
        const auto name = shownName(application);
        diagnostic({"Attempting to quit: ", name});
        if (applications.terminate(application)) {
            ++counts.graceful;
            diagnostic({"   Politely quit ", name});
        } else if (applications.forceTerminate(application)) {
            ++counts.forced;
            diagnostic({"   Force quit ", name});
        } else {
            diagnostic({"   Failed to quit ", name});
        }
    }
    return counts;
}

/// Those that nothing keeps when a workspace with these names and identifiers starts.
List notBelonging(List list, const Names& identifiers, const Names& names) {
    std::erase_if(list, [&](const RunningApplication& application) {
        if (isFinder(application)) return true;
        if (hasOneOf(identifiers, application)) {
            diagnostic({"   Keeping workspace app by bundle ID: ", withIdentifier(application)});
            return true;
        }
        const auto name = shownName(application);
        if (const auto* matched = matchedName(names, application)) {
            diagnostic({"   Keeping workspace app by name: ", name, " matches ", *matched});
            return true;
        }
        if (isSystemApplication(application)) {
            diagnostic({"   Keeping system app: ", name});
            return true;
        }
        diagnostic({"   Will quit non-workspace app: ", name});
        return false;
    });
    return list;
}

} // namespace

void WorkspaceStore::insertAppNames(const Resource& resource, Names& names) const {
    if (const auto name = appNameForResource(resource)) insert(*name, names);
    for (const auto& name : resource.associatedApps)
        insert(name, names);
    if (resource.type == ResourceType::application) insert(path::stem(resource.path), names);
}

void WorkspaceStore::finishWorkspace(std::optional<Workspace> workspace) {
    if (!workspace) workspace = activeWorkspace;
    if (!workspace) {
        return showInfoAlert("No Workspace Selected", "Please select a workspace first.");
    }
    diagnostic({"Quitting applications from workspace: ", workspace->name});
    autoSaveLayout(*workspace, "workspace");
    renewBookmarks(*workspace);
    const auto resources = activeResources(*workspace);
    Names names;
    for (const auto& resource : resources)
        insertAppNames(resource, names);
    if (names.empty()) {
        return showInfoAlert("No Applications to Quit",
                             "No applications found in this workspace's resources.");
    }
    diagnostic({"Workspace applications to quit: ", text::joined(names, ", ")});
    // Before the list, as a desktop that answers only later says nothing of what it has missed.
    const auto desktop = platform_.accessibility.desktop();
    const auto list = belonging(quittableApplications(platform_.applications, platform_.bundles),
                                identifiersOf(resources), names, false);
    markFinished(workspace->id);
    if (!desktop.tellsWindows) return sayThatNoneAreSeen(desktop);
    if (list.empty()) return;
    diagnostic({"Quitting ", std::to_string(list.size()), " workspace applications..."});
    const auto counts = quit(list, platform_.applications);
    platform_.mainQueue.after(summaryDelay, [this, counts, list] {
        showWorkspaceClosedSummary(counts.graceful, counts.forced, list);
    });
}

bool WorkspaceStore::saysThatNoneAreSeen() {
    const auto desktop = platform_.accessibility.desktop();
    if (!desktop.tellsWindows) sayThatNoneAreSeen(desktop);
    return !desktop.tellsWindows;
}

void WorkspaceStore::sayThatNoneAreSeen(const DesktopFacts& desktop) {
    showInfoAlert("Applications Not Quit",
                  "Corvane can't see which applications run, so it asks none to quit.\n\n" +
                      desktop.whatToDoFirst);
}

void WorkspaceStore::markFinished(const Uuid& workspaceId) {
    runningWorkspaces.mutate([&](auto& running) { running.erase(workspaceId); });
    runningResources.mutate([&](auto& running) { running.erase(workspaceId); });
    const auto& active = activeWorkspace.get();
    if (active && active->id == workspaceId && runningWorkspaces->empty()) {
        hasLaunchedResources = false;
    }
}

void WorkspaceStore::showWorkspaceClosedSummary(int graceful, int forced, const List& list) {
    if (!showWorkspaceClosedAlert) return;
    const int total = static_cast<int>(list.size());
    const int closed = graceful + forced;
    std::string message = closed == total ? "Successfully closed " + std::to_string(closed) +
                                                " workspace applications!"
                                          : "Closed " + std::to_string(closed) + " of " +
                                                std::to_string(total) + " workspace applications.";
    message += "\n\n• Gracefully quit: " + std::to_string(graceful) +
               "\n• Force quit: " + std::to_string(forced);
    if (closed != total) message += "\n• Failed: " + std::to_string(total - closed);
    showDismissibleAlert("Workspace Applications Closed", std::move(message),
                         DismissibleAlertType::workspaceClosed);
}

void WorkspaceStore::quitIndividualResource(const Resource& resource, const Workspace& workspace) {
    if (resource.type == ResourceType::separator) return;
    diagnostic({"Quitting individual resource: ", resource.name});
    const auto entry = runningResources->find(workspace.id);
    if (entry == runningResources->end() || entry->second.size() <= 1) {
        autoSaveLayout(workspace, "last resource in workspace");
    }
    Names names;
    insertAppNames(resource, names);
    if (names.empty()) {
        diagnostic({"No applications to quit for resource: ", resource.name});
    } else if (!saysThatNoneAreSeen()) {
        diagnostic(
            {"Apps to quit for resource '", resource.name, "': ", text::joined(names, ", ")});
        quit(belonging(quittableApplications(platform_.applications, platform_.bundles),
                       identifiersOf({resource}), names, true),
             platform_.applications);
        diagnostic({"Quit apps for resource: ", resource.name});
    }
    if (!runningResources->contains(workspace.id)) return;
    runningResources.mutate([&](auto& running) { running[workspace.id].erase(resource.id); });
}

void WorkspaceStore::quitNonWorkspaceApplications(const Workspace& workspace) {
    diagnostic({"Focus mode: Quitting non-workspace applications for '", workspace.name, "'..."});
    if (saysThatNoneAreSeen()) return;
    const auto resources = activeResources(workspace);
    Names names;
    for (const auto& resource : resources)
        insertAppNames(resource, names);
    const auto identifiers = identifiersOf(resources);
    diagnostic({"Workspace apps to keep: ", text::joined(names, ", ")});
    diagnostic({"Workspace bundle IDs to keep: ", text::joined(identifiers, ", ")});
    const auto list = notBelonging(quittableApplications(platform_.applications, platform_.bundles),
                                   identifiers, names);
    if (list.empty()) return;
    const auto total = std::to_string(list.size());
    diagnostic({"Focus mode: Quitting ", total, " non-workspace applications..."});
    const auto counts = quit(list, platform_.applications);
    diagnostic({"Focus mode: Successfully quit ", std::to_string(counts.graceful + counts.forced),
                " of ", total, " non-workspace applications"});
}

void WorkspaceStore::quitAllApplications() {
    if (saysThatNoneAreSeen()) return;
    auto list = quittableApplications(platform_.applications, platform_.bundles);
    std::erase_if(list, [](const RunningApplication& application) {
        return isFinder(application) || isSystemApplication(application);
    });
    if (list.empty()) {
        return showInfoAlert("Quit All Applications", "No user applications found to close.");
    }
    const auto count = std::ranges::count_if(list, [&](const RunningApplication& application) {
        return platform_.applications.terminate(application);
    });
    platform_.mainQueue.after(summaryDelay, [this, count = static_cast<int>(count), list] {
        showApplicationsClosedSummary(count, list);
    });
}

void WorkspaceStore::showApplicationsClosedSummary(int count, const List& list) {
    if (!showApplicationsClosedAlert) return;
    showDismissibleAlert("Applications Closed",
                         "Successfully closed " + std::to_string(count) + " of " +
                             std::to_string(list.size()) + " applications.",
                         DismissibleAlertType::applicationsClosed);
}

} // namespace corvane
