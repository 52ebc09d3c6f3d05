#include "Benchmarks.h"

#include <array>
#include <cmath>
#include <random>

namespace corvane::bench {
namespace {

constexpr std::array names{"Quartalsbericht", "Übersicht für März", "notes", "設計メモ",
                           "Invoice 2026-03", "Café – menu",        "main",  "Отчёт"};
constexpr std::array applications{"Visual Studio Code", "Firefox", "Text Editor", "LibreOffice",
                                  "Bildbetrachter",     "GIMP",    "Terminal"};
constexpr std::array symbols{"folder", "briefcase", "sparkles", "person", "hammer"};

class Samples {
public:
    Workspace workspace(std::size_t number, std::size_t resourceCount) {
        Workspace workspace;
        workspace.id = id();
        workspace.name = std::string(pick(names)) + " " + std::to_string(number);
        if (number % 3 == 0)
            workspace.description = "All that belongs to \"" + workspace.name + "\"";
        workspace.icon = pick(symbols);
        for (std::size_t i = 0; i < resourceCount; ++i)
            workspace.resources.push_back(resource(number, i));
        workspace.dateCreated = {780000000.0 + fraction() * 1e7};
        workspace.dateModified = {790000000.0 + fraction() * 1e7};
        workspace.hasLayoutSaved = number % 4 == 0;
        if (workspace.hasLayoutSaved) {
            auto& layouts = workspace.savedWindowLayouts.emplace();
            for (int i = 0; i < 6; ++i)
                layouts.push_back(layout());
        }
        return workspace;
    }

private:
    Resource resource(std::size_t workspace, std::size_t number) {
        // Half of them are files, as in life.
        constexpr std::array types{ResourceType::file,        ResourceType::file,
                                   ResourceType::folder,      ResourceType::file,
                                   ResourceType::application, ResourceType::file,
                                   ResourceType::url,         ResourceType::file,
                                   ResourceType::terminal,    ResourceType::separator};
        Resource resource;
        resource.id = id();
        resource.type = types[number % types.size()];
        resource.name = pick(names);
        resource.enabled = number % 7 != 6;
        if (number % 4 == 1) resource.associatedApps.push_back(pick(applications));
        const auto folder = "/home/björn/Projects/" + std::to_string(workspace) + "/src/components";
        const auto unique = std::to_string(number);
        switch (resource.type) {
        case ResourceType::file:
            resource.name += ".txt";
            resource.path = folder + "/" + unique + " " + resource.name;
            break;
        case ResourceType::folder:
            resource.path = folder + "/" + unique;
            break;
        case ResourceType::application:
            resource.name = pick(applications);
            resource.path = "/Applications/" + resource.name + ".app";
            resource.bundleIdentifier = "org.example.application" + unique;
            break;
        case ResourceType::url:
            resource.path = "https://docs.example.org/guide/page?id=" + unique + "&lang=de#anchor";
            break;
        case ResourceType::terminal:
            resource.path = folder + "|npm run \"watch:all\" -- --port 30" + unique;
            break;
        case ResourceType::separator:
            break;
        }
        return resource;
    }

    SavedWindowLayout layout() {
        SavedWindowLayout layout;
        layout.appName = pick(applications);
        layout.frame = {std::floor(fraction() * 1900), std::floor(fraction() * 1000), 1280, 800.5};
        layout.recordedAt = {795000000.0 + fraction() * 1e6};
        layout.screenFrame = Rect{0, 0, 2560, 1440};
        layout.relativeFrame = Rect{fraction(), fraction(), fraction(), fraction()};
        layout.screenIndex = 0;
        return layout;
    }

    template <typename List>
    const char* pick(const List& list) {
        return list[random_() % list.size()];
    }
    double fraction() { return static_cast<double>(random_()) / 4294967296.0; }
    Uuid id() {
        Uuid id;
        for (auto& byte : id.bytes)
            byte = static_cast<std::uint8_t>(random_());
        return id;
    }

    std::mt19937 random_{1};
};

} // namespace

std::vector<Workspace> sampleWorkspaces(std::size_t count, std::size_t resourcesEach) {
    Samples samples;
    std::vector<Workspace> workspaces;
    for (std::size_t i = 0; i < count; ++i)
        workspaces.push_back(samples.workspace(i, resourcesEach));
    return workspaces;
}

const std::vector<Workspace>& manyWorkspaces() {
    static const auto list = sampleWorkspaces(1000, 20);
    return list;
}

} // namespace corvane::bench
