#include "qt/WorkspaceListModel.h"

#include "core/WorkspaceStore.h"
#include "qt/CardRow.h"
#include "qt/Strings.h"
#include "ui/WorkspaceListState.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace corvane {

namespace {

using Key = std::pair<Uuid, int>;

Key keyOf(const CardRow& row) {
    return {row.workspaceId, row.repetition};
}

std::set<Key> keysOf(const std::vector<CardRow>& rows) {
    std::set<Key> keys;
    for (const auto& row : rows)
        keys.insert(keyOf(row));
    return keys;
}

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
    const auto& id = preview.chips[std::size_t(chip)].resourceId;
    const auto found = std::ranges::find(workspace.resources, id, &Resource::id);
    return found == workspace.resources.end() ? nullptr : &*found;
}

} // namespace

WorkspaceListModel::WorkspaceListModel(WorkspaceListState& state, MakeSheet makeEditSheet)
    : state_(state), makeEditSheet_(std::move(makeEditSheet)), rows_(currentRows()),
      relay_(state.objectWillChange, [this] { refresh(); }) {
    connect(&editSheet_, &SheetHolder::changed, this, &WorkspaceListModel::sheetChanged);
}

WorkspaceListModel::~WorkspaceListModel() = default;

int WorkspaceListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

QHash<int, QByteArray> WorkspaceListModel::roleNames() const {
    return {{NameRole, "name"},
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
    const auto& row = rows_[std::size_t(index.row())];
    switch (role) {
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
    return state_.content(rows_.size()) == ListContent::emptySearch;
}

bool WorkspaceListModel::showsEmptyWorkspaces() const {
    return state_.content(rows_.size()) == ListContent::emptyWorkspaces;
}

QString WorkspaceListModel::emptySearchMessage() const {
    return toQString(state_.emptySearchMessage());
}

const Workspace* WorkspaceListModel::workspaceToFinish() const {
    for (const auto* workspace : state_.filteredWorkspaces()) {
        if (state_.card(workspace->id).showingFinishConfirm) return workspace;
    }
    return nullptr;
}

QString WorkspaceListModel::finishMessage() const {
    const auto* workspace = workspaceToFinish();
    return workspace ? toQString(corvane::finishMessage(workspace->name)) : QString();
}

/// The store may be a turn ahead of the view.
const Workspace* WorkspaceListModel::workspaceOf(int row) const {
    const auto workspaces = state_.filteredWorkspaces();
    if (row < 0 || std::size_t(row) >= std::min(rows_.size(), workspaces.size())) return nullptr;
    const auto* workspace = workspaces[std::size_t(row)];
    return workspace->id == rows_[std::size_t(row)].workspaceId ? workspace : nullptr;
}

void WorkspaceListModel::start(int row) {
    if (const auto* workspace = workspaceOf(row)) state_.card(workspace->id).start(*workspace);
}

void WorkspaceListModel::requestFinish(int row) {
    const auto* workspace = workspaceOf(row);
    if (workspace) state_.card(workspace->id).showingFinishConfirm = true;
}

void WorkspaceListModel::confirmFinish() {
    const auto* found = workspaceToFinish();
    if (!found) return;
    const Workspace workspace = *found;
    auto& card = state_.card(workspace.id);
    card.showingFinishConfirm = false;
    card.finish(workspace);
}

void WorkspaceListModel::cancelFinish() {
    const auto* workspace = workspaceToFinish();
    if (workspace) state_.card(workspace->id).showingFinishConfirm = false;
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
    if (const auto* resource = resourceOfChip(workspace, rows_[std::size_t(row)].preview, chip)) {
        corvane::pressChip(*resource, workspace, state_.store());
    }
}

QString WorkspaceListModel::chipTooltip(int row, int chip) const {
    const auto* workspace = workspaceOf(row);
    if (!workspace) return {};
    const auto& preview = rows_[std::size_t(row)].preview;
    const auto* resource = resourceOfChip(*workspace, preview, chip);
    if (!resource) return {};
    return toQString(
        corvane::chipTooltip(*resource, preview.chips[std::size_t(chip)].state, state_.store()));
}

std::vector<CardRow> WorkspaceListModel::currentRows() const {
    std::vector<CardRow> rows;
    std::map<Uuid, int> seen;
    for (const auto* workspace : state_.filteredWorkspaces()) {
        const auto& card = state_.card(workspace->id);
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
                        .startTitle = std::string(card.startTitle()),
                        .statusText = card.statusText(*workspace),
                        .preview = resourcePreview(*workspace, state_.store())});
    }
    return rows;
}

void WorkspaceListModel::refresh() {
    const auto next = currentRows();
    removeRowsNotIn(next);
    insertAndMoveTo(next);
    updateTo(next);
    emit contentChanged();
}

void WorkspaceListModel::removeRowsNotIn(const std::vector<CardRow>& next) {
    const auto staying = keysOf(next);
    for (std::size_t end = rows_.size(); end > 0;) {
        std::size_t begin = end;
        while (begin > 0 && !staying.contains(keyOf(rows_[begin - 1])))
            --begin;
        if (begin == end) {
            --end;
            continue;
        }
        beginRemoveRows({}, int(begin), int(end - 1));
        rows_.erase(rows_.begin() + std::ptrdiff_t(begin), rows_.begin() + std::ptrdiff_t(end));
        endRemoveRows();
        end = begin;
    }
}

void WorkspaceListModel::insertAndMoveTo(const std::vector<CardRow>& next) {
    const auto known = keysOf(rows_);
    for (std::size_t i = 0; i < next.size();) {
        if (i < rows_.size() && keyOf(rows_[i]) == keyOf(next[i])) {
            ++i;
            continue;
        }
        const auto at = rows_.begin() + std::ptrdiff_t(i);
        if (known.contains(keyOf(next[i]))) {
            const auto from = std::find_if(
                at, rows_.end(), [&](const CardRow& row) { return keyOf(row) == keyOf(next[i]); });
            const int source = int(from - rows_.begin());
            beginMoveRows({}, source, source, {}, int(i));
            std::rotate(at, from, from + 1);
            endMoveRows();
            ++i;
            continue;
        }
        std::size_t end = i;
        while (end < next.size() && !known.contains(keyOf(next[end])))
            ++end;
        beginInsertRows({}, int(i), int(end - 1));
        rows_.insert(at, next.begin() + std::ptrdiff_t(i), next.begin() + std::ptrdiff_t(end));
        endInsertRows();
        i = end;
    }
}

void WorkspaceListModel::updateTo(const std::vector<CardRow>& next) {
    for (std::size_t i = 0; i < next.size(); ++i) {
        if (rows_[i] == next[i]) continue;
        rows_[i] = next[i];
        emit dataChanged(index(int(i)), index(int(i)));
    }
}

} // namespace corvane
