#include "qt/models/WorkspaceListModel.h"

#include "core/WorkspaceStore.h"
#include "qt/items/Strings.h"
#include "ui/WorkspaceListState.h"
#include "ui/WorkspaceSheet.h"

#include <QJSEngine>
#include <algorithm>
#include <iterator>
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
        chips.append(QVariantMap{{"key", toQString(chip.key.toString())},
                                 {"name", onOneLine(chip.name)},
                                 {"type", toQString(rawValue(chip.type))},
                                 {"symbol", toQString(symbolName(chip.type))},
                                 {"state", stateName(chip.state)},
                                 {"isEnabled", chip.enabled},
                                 {"isMissing", chip.isMissing}});
    }
    return chips;
}

const Resource* resourceOf(const QString& chip, const Workspace& workspace) {
    const auto key = RecordKey::parse(chip.toStdString());
    const auto place = key ? placeOf(*key, workspace.resources) : std::nullopt;
    return place ? &workspace.resources[*place] : nullptr;
}

std::set<Uuid> identifiersOf(const std::vector<Workspace>& workspaces) {
    std::set<Uuid> identifiers;
    for (const auto& workspace : workspaces)
        identifiers.insert(workspace.id);
    return identifiers;
}

} // namespace

WorkspaceListModel::WorkspaceListModel(WorkspaceListState& state, WorkspaceStore& store,
                                       MakeSheet makeEditSheet, MakeResources makeResources)
    : KeyedListModel(currentRows(state, store)), state_(state), store_(store),
      makeEditSheet_(std::move(makeEditSheet)), makeResources_(std::move(makeResources)),
      shownSearch_(store.searchText.get()), known_(identifiersOf(*store.workspaces)),
      relay_(state.objectWillChange, [this] { refresh(); }) {
    announce(false);
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
            {ResourcesRole, "resources"},
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
        return toQString(row.workspace.toString());
    case NameRole:
        return onOneLine(row.name);
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
    case ResourcesRole:
        return QVariant::fromValue(row.isExpanded ? resourcesOf(row.workspace.id) : nullptr);
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

const Workspace* WorkspaceListModel::workspaceOf(const QString& workspaceId) const {
    const auto& workspaces = *store_.workspaces;
    const auto key = RecordKey::parse(workspaceId.toStdString());
    const auto place = key ? placeOf(*key, workspaces) : std::nullopt;
    return place ? &workspaces[*place] : nullptr;
}

int WorkspaceListModel::rowOf(const QString& workspaceId) const {
    const auto key = RecordKey::parse(workspaceId.toStdString());
    const auto found = key ? std::ranges::find(rows(), *key, &CardRow::key) : rows().end();
    return found == rows().end() ? -1 : int(found - rows().begin());
}

template <typename Action>
void WorkspaceListModel::later(const QString& workspaceId, Action action) {
    QMetaObject::invokeMethod(
        this,
        [this, workspaceId, action] {
            const auto* found = workspaceOf(workspaceId);
            if (!found) return;
            const Workspace workspace = *found;
            action(state_.card(workspace.id), workspace);
        },
        Qt::QueuedConnection);
}

void WorkspaceListModel::start(const QString& workspaceId) {
    if (const auto* found = workspaceOf(workspaceId)) state_.card(found->id).start(*found);
}

void WorkspaceListModel::requestFinish(const QString& workspaceId) {
    if (const auto* found = workspaceOf(workspaceId))
        state_.card(found->id).showingFinishConfirm = true;
}

void WorkspaceListModel::confirmFinish() {
    const auto* row = rowToFinish();
    const auto* found = row ? workspaceOf(toQString(row->workspace.toString())) : nullptr;
    cancelFinish();
    if (!found) return;
    const Workspace workspace = *found;
    state_.card(workspace.id).finish(workspace);
}

void WorkspaceListModel::cancelFinish() {
    const auto* row = rowToFinish();
    if (row) state_.card(row->workspace.id).showingFinishConfirm = false;
}

void WorkspaceListModel::saveLayout(const QString& workspaceId) {
    later(workspaceId, [](auto& card, const auto& workspace) { card.saveLayout(workspace); });
}

void WorkspaceListModel::toggleExpanded(const QString& workspaceId) {
    if (const auto* workspace = workspaceOf(workspaceId)) {
        auto& card = state_.card(workspace->id);
        card.isExpanded = !card.isExpanded;
    }
}

ResourceListModel* WorkspaceListModel::resourcesOf(const Uuid& workspace) const {
    auto& resources = resources_[workspace];
    if (!resources) {
        resources = makeResources_(workspace);
        // The views may not take what belongs here for theirs.
        QJSEngine::setObjectOwnership(resources.get(), QJSEngine::CppOwnership);
    }
    return resources.get();
}

void WorkspaceListModel::edit(const QString& workspaceId) {
    later(workspaceId, [this](auto&, const auto& workspace) {
        editSheet_.open(std::make_unique<WorkspaceSheetModel>(makeEditSheet_(workspace)));
    });
}

void WorkspaceListModel::duplicate(const QString& workspaceId) {
    later(workspaceId, [this](auto&, const auto& workspace) {
        expectNew();
        store_.duplicateWorkspace(workspace);
    });
}

void WorkspaceListModel::remove(const QString& workspaceId) {
    later(workspaceId, [](auto& card, const auto& workspace) { card.deleteWorkspace(workspace); });
}

void WorkspaceListModel::pressChip(const QString& workspaceId, const QString& chip) {
    const auto* found = workspaceOf(workspaceId);
    if (!found) return;
    // A copy, as launching may change the list.
    const Workspace workspace = *found;
    if (const auto* resource = resourceOf(chip, workspace)) store_.toggle(*resource, workspace);
}

QString WorkspaceListModel::chipTooltip(const QString& workspaceId, const QString& chip) const {
    const auto* workspace = workspaceOf(workspaceId);
    const auto* resource = workspace ? resourceOf(chip, *workspace) : nullptr;
    if (!resource) return {};
    const bool isRunning = store_.isRunning(resource->id, workspace->id);
    const auto state = isRunning ? ChipState::running : ChipState::plain;
    return toQString(corvane::chipTooltip(*resource, state, store_));
}

std::vector<CardRow> WorkspaceListModel::currentRows(WorkspaceListState& state,
                                                     const WorkspaceStore& store) {
    std::vector<CardRow> rows;
    std::map<Uuid, int> seen;
    for (const auto* workspace : state.filteredWorkspaces()) {
        const auto& card = state.card(workspace->id);
        rows.push_back({.workspace = {workspace->id, seen[workspace->id]++},
                        .name = workspace->name,
                        .description = workspace->description,
                        .icon = workspace->icon,
                        .gradient = int(cardGradientIndex(workspace->name)),
                        .isRunning = card.isRunning(),
                        .isLoading = card.isLoading,
                        .isExpanded = card.isExpanded,
                        .canSaveLayout = card.canSaveLayout(),
                        .asksToFinish = card.showingFinishConfirm,
                        .startTitle = card.startTitle(),
                        .statusText = card.statusText(*workspace),
                        .preview = resourcePreview(*workspace, store, state.missing())});
    }
    return rows;
}

void WorkspaceListModel::refresh() {
    state_.tidy();
    const auto& search = store_.searchText.get();
    const bool isSameSearch = std::exchange(shownSearch_, search) == search;
    isSameSearch ? show(currentRows(state_, store_)) : showOther(currentRows(state_, store_));
    dropCollapsedResources();
    emit contentChanged();
    if (!isSameSearch) emit searched();
    tellOfNew();
    announce(isSameSearch);
}

/// A card that comes with another search says nothing new.
void WorkspaceListModel::announce(bool isSameSearch) {
    std::map<RecordKey, std::string> progress;
    for (const auto& row : rows()) {
        if (!row.isRunning && !row.isLoading) continue;
        const auto& text = row.isRunning ? row.statusText : row.startTitle;
        progress[row.key()] = text;
        const auto before = progress_.find(row.key());
        const bool isNew = before == progress_.end() || before->second != text;
        if (isSameSearch && isNew) emit announced(onOneLine(row.name + ": " + text));
    }
    progress_ = std::move(progress);
    if (!isSameSearch && showsEmptySearch()) emit announced(emptySearchMessage());
}

void WorkspaceListModel::tellOfNew() {
    auto present = identifiersOf(*store_.workspaces);
    std::vector<Uuid> fresh;
    std::ranges::set_difference(present, known_, std::back_inserter(fresh));
    known_ = std::move(present);
    const bool isExpected = std::exchange(expectsNew_, false);
    if (isExpected && fresh.size() == 1) emit added(toQString(fresh.front().toString()));
}

/// After the views of those that have collapsed were told to go.
void WorkspaceListModel::dropCollapsedResources() {
    for (auto entry = resources_.begin(); entry != resources_.end();) {
        const bool isThere = store_.find(entry->first) != nullptr;
        if (isThere && state_.card(entry->first).isExpanded) {
            ++entry;
            continue;
        }
        entry->second.release()->deleteLater();
        entry = resources_.erase(entry);
    }
}

} // namespace corvane
