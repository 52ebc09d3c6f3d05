#include "ui/AddResourceSheet.h"

#include "core/BookmarkManager.h"
#include "core/WorkspaceStore.h"
#include "foundation/Text.h"
#include "platform/Bundles.h"
#include "platform/FileSystem.h"

#include <algorithm>

namespace corvane {

namespace {

/// The host, of which there is nothing yet behind a bare "https://"; else what was typed.
std::string nameFrom(const Url& url, const std::string& typed) {
    const auto& host = url.host();
    const bool isNamed = host && (!host->empty() || url.path().empty());
    return isNamed ? *host : typed;
}

} // namespace

OpenPanel panelFor(ResourceType type, std::string title) {
    OpenPanel panel{.title = std::move(title)};
    if (type == ResourceType::application) {
        panel.content = PanelContent::application;
        panel.directory = "/Applications";
    } else {
        panel.content = type == ResourceType::folder ? PanelContent::folder : PanelContent::file;
    }
    return panel;
}

AddResourceSheet::AddResourceSheet(const Uuid& workspaceId, WorkspaceStore& store,
                                   BookmarkManager& bookmarks, Panels& panels,
                                   const Bundles& bundles, const FileSystem& fileSystem,
                                   std::optional<RecordKey> edited)
    : workspaceId_(workspaceId), store_(store), bookmarks_(bookmarks), panels_(panels),
      bundles_(bundles), fileSystem_(fileSystem), edited_(edited) {
    const auto* workspace = edited ? store.find(workspaceId) : nullptr;
    const auto place = workspace ? placeOf(*edited, workspace->resources) : std::nullopt;
    if (!place) return;
    const auto& resource = workspace->resources[*place];
    selectedResourceType = resource.type;
    resourceName = resource.name;
    resourcePath = resource.path;
    enabledByDefault = resource.enabled;
}

void AddResourceSheet::select(ResourceType type) {
    selectedResourceType = type;
    resourceName = "";
    resourcePath = "";
    if (type == ResourceType::url) resourcePath = "https://";
}

void AddResourceSheet::setPath(const std::string& text) {
    resourcePath = text;
    if (selectedResourceType != ResourceType::url || !resourceName->empty() || !isValidURL(text)) {
        return;
    }
    const auto url = Url::parse(text.starts_with("http") ? text : "https://" + text);
    if (url) resourceName = nameFrom(*url, text);
}

void AddResourceSheet::pick() {
    if (!factsOf(selectedResourceType).isInFileSystem) return;
    const auto url =
        panels_.runOpenPanel(panelFor(selectedResourceType, std::string(pathHeading())));
    if (url) takePicked(*url);
}

void AddResourceSheet::takePicked(const Url& url) {
    if (!store_.acceptsPath(url)) return;
    resourcePath = url.path();
    if (resourceName->empty()) resourceName = path::stem(url.path());
}

bool AddResourceSheet::canAdd() const {
    if (resourceName->empty()) return false;
    if (selectedResourceType == ResourceType::url) return isValidURL(resourcePath.get());
    return !resourcePath->empty();
}

void AddResourceSheet::add() {
    if (!canAdd()) return;
    const ResourceType type = selectedResourceType;
    auto resource = makeResource(resourceName, resourcePath, type, bundles_);
    resource.enabled = enabledByDefault;
    if (factsOf(type).isInFileSystem && fileSystem_.exists(resourcePath)) {
        bookmarks_.createBookmark(Url::fromPath(resourcePath.get()),
                                  BookmarkManager::bookmarkKey(resourcePath.get(), type));
    }
    edited_ ? change(resource) : store_.addResource(std::move(resource), workspaceId_);
}

void AddResourceSheet::change(const Resource& wanted) {
    const auto* found = store_.find(workspaceId_);
    const auto place = found ? placeOf(*edited_, found->resources) : std::nullopt;
    if (!place) return;
    Workspace workspace = *found;
    auto& resource = workspace.resources[*place];
    resource.name = wanted.name;
    resource.path = wanted.path;
    resource.type = wanted.type;
    resource.enabled = wanted.enabled;
    resource.bundleIdentifier = wanted.bundleIdentifier;
    store_.updateWorkspace(std::move(workspace));
}

std::string_view AddResourceSheet::title() const {
    return edited_ ? "Edit Resource" : "Add New Resource";
}

std::string_view AddResourceSheet::subtitle() const {
    return edited_ ? "Change what this resource opens"
                   : "Add a file, folder, app, URL, or terminal command to your workspace";
}

std::string_view AddResourceSheet::addTitle() const {
    return edited_ ? "Save" : "Add Resource";
}

std::string_view AddResourceSheet::enabledTitle() const {
    return edited_ ? "Enabled" : "Enabled by default";
}

std::string_view AddResourceSheet::pathHeading() const {
    return factsOf(selectedResourceType).pathHeading;
}

std::string_view AddResourceSheet::pathPrompt() const {
    return factsOf(selectedResourceType).pathPrompt;
}

std::string AddResourceSheet::pickerTitle() const {
    if (!resourcePath->empty()) return resourcePath;
    return "Click to select " + std::string(rawValue(selectedResourceType));
}

std::string_view AddResourceSheet::pickerSymbol() const {
    return factsOf(selectedResourceType).pickerSymbol;
}

std::string_view AddResourceSheet::statusText() const {
    if (resourcePath->empty()) return "";
    if (selectedResourceType == ResourceType::terminal) {
        return "This command will be executed in Terminal";
    }
    if (selectedResourceType != ResourceType::url) return "";
    return isStatusValid() ? "Valid URL"
                           : "Enter a valid URL (https://example.com or localhost:3000)";
}

bool AddResourceSheet::isValidURL(std::string_view text) {
    static constexpr std::array<std::string_view, 4> schemes{"http", "https", "ftp", "file"};
    if (text.starts_with("localhost:") || text.starts_with("127.0.0.1:")) return true;
    if (const auto url = Url::parse(text); url && url->hasScheme()) {
        const auto scheme = text::lowercased(url->scheme());
        if (std::ranges::find(schemes, scheme) != schemes.end()) return true;
    }
    if (text.find('.') == std::string_view::npos) return false;
    if (text.find(' ') != std::string_view::npos) return false;
    return Url::parse("https://" + std::string(text)).has_value();
}

} // namespace corvane
