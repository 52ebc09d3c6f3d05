#include "qt/WorkspaceListModel.h"

#include "qt/CardRow.h"
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

} // namespace

WorkspaceListModel::WorkspaceListModel(WorkspaceListState& state)
    : state_(state), rows_(currentRows()), relay_(state.objectWillChange, [this] { refresh(); }) {}

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
            {StartTitleRole, "startTitle"},
            {StatusTextRole, "statusText"}};
}

QVariant WorkspaceListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const auto& row = rows_[std::size_t(index.row())];
    switch (role) {
    case NameRole:
        return row.name;
    case DescriptionRole:
        return row.description;
    case IconRole:
        return row.icon;
    case GradientRole:
        return row.gradient;
    case IsRunningRole:
        return row.isRunning;
    case IsLoadingRole:
        return row.isLoading;
    case StartTitleRole:
        return row.startTitle;
    case StatusTextRole:
        return row.statusText;
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
    return QString::fromStdString(state_.emptySearchMessage());
}

void WorkspaceListModel::start(int row) {
    const auto workspaces = state_.filteredWorkspaces();
    if (row < 0 || std::size_t(row) >= std::min(rows_.size(), workspaces.size())) return;
    const auto& workspace = *workspaces[std::size_t(row)];
    // The view may be a turn behind the store.
    if (workspace.id != rows_[std::size_t(row)].workspaceId) return;
    state_.card(workspace.id).start(workspace);
}

std::vector<CardRow> WorkspaceListModel::currentRows() const {
    std::vector<CardRow> rows;
    std::map<Uuid, int> seen;
    for (const auto* workspace : state_.filteredWorkspaces()) {
        const auto& card = state_.card(workspace->id);
        const auto title = card.startTitle();
        rows.push_back({.workspaceId = workspace->id,
                        .repetition = seen[workspace->id]++,
                        .name = QString::fromStdString(workspace->name),
                        .description = QString::fromStdString(workspace->description),
                        .icon = QString::fromStdString(workspace->icon),
                        .gradient = int(cardGradientIndex(workspace->name)),
                        .isRunning = card.isRunning(),
                        .isLoading = card.isLoading,
                        .startTitle = QString::fromUtf8(title.data(), qsizetype(title.size())),
                        .statusText = QString::fromStdString(card.statusText(*workspace))});
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
