#include "qt/models/WorkspaceListModel.h"

#include "core/WorkspaceStore.h"
#include "qt/items/Strings.h"
#include "ui/WorkspaceListState.h"

#include <QJSEngine>
#include <algorithm>
#include <map>
#include <utility>

namespace corvane {

namespace {

const char* stateName(ChipState state) {
    switch (state) {
    case ChipState::running:
        return "running";
    case ChipState::startMarked:
        return "startMarked";
    case ChipState::plain:
        break;
    }
    return "plain";
}

QVariantList chipsOf(const ResourcePreview& preview) {
    QVariantList chips;
    for (const auto& chip : preview.chips) {
        chips.append(QVariantMap{{"name", toQString(chip.name)},
                                 {"type", toQString(rawValue(chip.type))},
                                 {"symbol", toQString(symbolName(chip.type))},
                                 {"state", stateName(chip.state)}});
    }
    return chips;
}

const Resource* resourceOfChip(const Workspace& workspace, const ResourcePreview& preview,
                               int chip) {
    if (chip < 0 || std::size_t(chip) >= preview.chips.size()) return nullptr;
    return findById(workspace.resources, preview.chips[std::size_t(chip)].resourceId);
}

} // namespace

WorkspaceListModel::WorkspaceListModel(WorkspaceListState& state, MakeSheet makeEditSheet,
                                       MakeResources makeResources)
    : KeyedListModel(currentRows(state)), state_(state), makeEditSheet_(std::move(makeEditSheet)),
      makeResources_(std::move(makeResources)), shownSearch_(state.store().searchText.get()),
      relay_(state.objectWillChange, [this] { refresh(); }) {
    connect(&editSheet_, &SheetHolder::changed, this, &WorkspaceListModel::sheetChanged);
}

WorkspaceListModel::~WorkspaceListModel() = default;

QHash<int, QByteArray> WorkspaceListModel::roleNames() const {
    return {{WorkspaceIdRole, "workspaceId"},
            {NameRole, "name"},
            {DescriptionRole, "description"},
            {IconRole, "icon"},
            {GradientRole, "gradient"},
            {IsRunningRole, "isRunning"},
            {IsLoadingRole, "isLoading"},
            {IsExpandedRole, "isExpanded"},
            {CanSaveLayoutRole, "canSaveLayout"},
            {StartTitleRole, "startTitle"},
            {StatusTextRole, "statusText"},
            {ChipsRole, "chips"},
            {CounterRole, "counter"}};
}

QVariant WorkspaceListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const auto& row = rows()[std::size_t(index.row())];
    switch (role) {
    case WorkspaceIdRole:
        return toQString(row.workspaceId.toString());
    case NameRole:
        return toQString(row.name);
    case DescriptionRole:
        return toQString(row.description);
    case IconRole:
        return toQString(row.icon);
    case GradientRole:
        return row.gradient;
    case IsRunningRole:
        return row.isRunning;
    case IsLoadingRole:
        return row.isLoading;
    case IsExpandedRole:
        return row.isExpanded;
    case CanSaveLayoutRole:
        return row.canSaveLayout;
    case StartTitleRole:
        return toQString(row.startTitle);
    case StatusTextRole:
        return toQString(row.statusText);
    case ChipsRole:
        return chipsOf(row.preview);
    case CounterRole:
        return toQString(row.preview.counter);
    default:
        return {};
    }
}

bool WorkspaceListModel::showsEmptySearch() const {
    return state_.content(rows().size()) == ListContent::emptySearch;
}

bool WorkspaceListModel::showsEmptyWorkspaces() const {
    return state_.content(rows().size()) == ListContent::emptyWorkspaces;
}

QString WorkspaceListModel::emptySearchMessage() const {
    return toQString(state_.emptySearchMessage());
}

const CardRow* WorkspaceListModel::rowToFinish() const {
    const auto found = std::ranges::find_if(rows(), &CardRow::asksToFinish);
    return found == rows().end() ? nullptr : &*found;
}

QString WorkspaceListModel::finishMessage() const {
    const auto* row = rowToFinish();
    return row ? toQString(corvane::finishMessage(row->name)) : QString();
}

/// The store may be a turn ahead of the view.
const Workspace* WorkspaceListModel::workspaceOf(int row) const {
    const auto* shown = rowAt(row);
    if (!shown) return nullptr;
    int repetition = 0;
    for (const auto& workspace : *state_.store().workspaces) {
        if (workspace.id == shown->workspaceId && repetition++ == shown->repetition)
            return &workspace;
    }
    return nullptr;
}

void WorkspaceListModel::start(int row) {
    if (const auto* workspace = workspaceOf(row)) state_.card(workspace->id).start(*workspace);
}

void WorkspaceListModel::requestFinish(int row) {
    const auto* workspace = workspaceOf(row);
    if (workspace) state_.card(workspace->id).showingFinishConfirm = true;
}

void WorkspaceListModel::confirmFinish() {
    const auto* row = rowToFinish();
    const auto* found = row ? workspaceOf(int(row - rows().data())) : nullptr;
    cancelFinish();
    if (!found) return;
    const Workspace workspace = *found;
    state_.card(workspace.id).finish(workspace);
}

void WorkspaceListModel::cancelFinish() {
    if (const auto* row = rowToFinish()) state_.card(row->workspaceId).showingFinishConfirm = false;
}

void WorkspaceListModel::saveLayout(int row) {
    if (const auto* found = workspaceOf(row)) {
        const Workspace workspace = *found;
        state_.card(workspace.id).saveLayout(workspace);
    }
}

void WorkspaceListModel::toggleExpanded(int row) {
    if (const auto* workspace = workspaceOf(row)) {
        auto& card = state_.card(workspace->id);
        card.isExpanded = !card.isExpanded;
    }
}

ResourceListModel* WorkspaceListModel::resourcesOf(const QString& workspaceId) {
    const auto id = Uuid::parse(workspaceId.toStdString());
    if (!id) return nullptr;
    auto& resources = resources_[*id];
    if (!resources) {
        resources = makeResources_(*id);
        // The views may not take what belongs here for theirs.
        QJSEngine::setObjectOwnership(resources.get(), QJSEngine::CppOwnership);
    }
    return resources.get();
}

void WorkspaceListModel::edit(int row) {
    if (const auto* workspace = workspaceOf(row)) editSheet_.open(makeEditSheet_(*workspace));
}

void WorkspaceListModel::duplicate(int row) {
    if (const auto* workspace = workspaceOf(row)) state_.store().duplicateWorkspace(*workspace);
}

void WorkspaceListModel::remove(int row) {
    if (const auto* found = workspaceOf(row)) {
        const Workspace workspace = *found;
        state_.card(workspace.id).deleteWorkspace(workspace);
    }
}

void WorkspaceListModel::pressChip(int row, int chip) {
    const auto* found = workspaceOf(row);
    if (!found) return;
    const Workspace workspace = *found;
    if (const auto* resource = resourceOfChip(workspace, rows()[std::size_t(row)].preview, chip)) {
        state_.store().toggle(*resource, workspace);
    }
}

QString WorkspaceListModel::chipTooltip(int row, int chip) const {
    const auto* workspace = workspaceOf(row);
    if (!workspace) return {};
    const auto& preview = rows()[std::size_t(row)].preview;
    const auto* resource = resourceOfChip(*workspace, preview, chip);
    if (!resource) return {};
    return toQString(
        corvane::chipTooltip(*resource, preview.chips[std::size_t(chip)].state, state_.store()));
}

std::vector<CardRow> WorkspaceListModel::currentRows(WorkspaceListState& state) {
    std::vector<CardRow> rows;
    std::map<Uuid, int> seen;
    for (const auto* workspace : state.filteredWorkspaces()) {
        const auto& card = state.card(workspace->id);
        rows.push_back({.workspaceId = workspace->id,
                        .repetition = seen[workspace->id]++,
                        .name = workspace->name,
                        .description = workspace->description,
                        .icon = workspace->icon,
                        .gradient = int(cardGradientIndex(workspace->name)),
                        .isRunning = card.isRunning(),
                        .isLoading = card.isLoading,
                        .isExpanded = card.isExpanded,
                        .canSaveLayout = card.canSaveLayout(),
                        .asksToFinish = card.showingFinishConfirm,
                        .startTitle = std::string(card.startTitle()),
                        .statusText = card.statusText(*workspace),
                        .preview = resourcePreview(*workspace, state.store())});
    }
    return rows;
}

void WorkspaceListModel::refresh() {
    const auto& search = state_.store().searchText.get();
    if (std::exchange(shownSearch_, search) == search) {
        show(currentRows(state_));
    } else {
        showOther(currentRows(state_));
    }
    dropCollapsedResources();
    emit contentChanged();
}

/// After the views of those that have collapsed were told to go.
void WorkspaceListModel::dropCollapsedResources() {
    for (auto entry = resources_.begin(); entry != resources_.end();) {
        if (state_.card(entry->first).isExpanded) {
            ++entry;
            continue;
        }
        entry->second.release()->deleteLater();
        entry = resources_.erase(entry);
    }
}

} // namespace corvane
