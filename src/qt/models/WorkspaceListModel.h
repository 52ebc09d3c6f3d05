#pragma once

#include "qt/models/ChangeRelay.h"
#include "qt/models/KeyedListModel.h"
#include "qt/models/ResourceListModel.h"
#include "qt/models/SheetHolder.h"
#include "qt/models/WorkspaceSheetModel.h"
#ifndef Q_MOC_RUN // Which can't read what this includes.
#include "ui/WorkspaceListState.h"
#endif
#ifndef Q_MOC_RUN // Which can't read what this includes.
#include "qt/models/CardRow.h"
#endif

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include <QtQml/qqmlregistration.h>

namespace corvane {

struct Workspace;
class WorkspaceListState;
class WorkspaceStore;

/// The cards, as the search lets them through, one row a card. An action on a row that isn't there
/// any more does nothing.
class WorkspaceListModel : public KeyedListModel<CardRow> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its window")
    Q_PROPERTY(bool showsEmptySearch READ showsEmptySearch NOTIFY contentChanged)
    Q_PROPERTY(bool showsEmptyWorkspaces READ showsEmptyWorkspaces NOTIFY contentChanged)
    Q_PROPERTY(QString emptySearchMessage READ emptySearchMessage NOTIFY contentChanged)
    /// The message of the finish dialog while it is up, else empty.
    Q_PROPERTY(QString finishMessage READ finishMessage NOTIFY contentChanged)
    /// The sheet that edits a workspace while it is up, else null.
    Q_PROPERTY(corvane::WorkspaceSheetModel* editSheet READ editSheet NOTIFY sheetChanged)

public:
    enum Role {
        WorkspaceIdRole = Qt::UserRole,
        NameRole,
        DescriptionRole,
        IconRole,
        GradientRole,
        IsRunningRole,
        IsLoadingRole,
        IsExpandedRole,
        ResourcesRole,
        CanSaveLayoutRole,
        StartTitleRole,
        StatusTextRole,
        ChipsRole,
        CounterRole,
    };
    using MakeSheet = std::function<std::unique_ptr<WorkspaceSheet>(const Workspace&)>;
    using MakeResources = std::function<std::unique_ptr<ResourceListModel>(const Uuid&)>;

    /// State and store outlive the model.
    WorkspaceListModel(WorkspaceListState& state, WorkspaceStore& store, MakeSheet makeEditSheet,
                       MakeResources makeResources);
    ~WorkspaceListModel() override;

    /// `workspaceId` (with what tells it from others of its identifier), `name`, `description`,
    /// `icon` (a symbol's name), `gradient` (an index), `isRunning`, `isLoading`, `isExpanded`,
    /// `resources` (their model while the card is expanded, else null), `canSaveLayout`,
    /// `startTitle`, `statusText`, `chips` (a list of objects with `key`, `name`, `type`, `symbol`,
    /// `state`, `isEnabled` and `isMissing`, `type` and `state` as "url" and "running") and
    /// `counter`.
    QHash<int, QByteArray> roleNames() const override;
    QVariant data(const QModelIndex& index, int role) const override;

    bool showsEmptySearch() const;
    bool showsEmptyWorkspaces() const;
    QString emptySearchMessage() const;
    QString finishMessage() const;
    WorkspaceSheetModel* editSheet() const { return editSheet_.sheet(); }

    // What is asked of a workspace names it by its `workspaceId`, and a chip by its `key`.

    Q_INVOKABLE void start(const QString& workspaceId);
    /// Asks before it finishes.
    Q_INVOKABLE void requestFinish(const QString& workspaceId);
    Q_INVOKABLE void confirmFinish();
    Q_INVOKABLE void cancelFinish();
    Q_INVOKABLE void saveLayout(const QString& workspaceId);
    Q_INVOKABLE void toggleExpanded(const QString& workspaceId);
    Q_INVOKABLE void edit(const QString& workspaceId);
    Q_INVOKABLE void duplicate(const QString& workspaceId);
    Q_INVOKABLE void remove(const QString& workspaceId);
    Q_INVOKABLE void pressChip(const QString& workspaceId, const QString& chip);
    Q_INVOKABLE QString chipTooltip(const QString& workspaceId, const QString& chip) const;
    /// Another program may have moved files meanwhile.
    Q_INVOKABLE void lookForFiles() { state_.missing().look(); }
    /// The next workspace that comes alone is one that the user has just asked for here.
    Q_INVOKABLE void expectNew() { expectsNew_ = true; }
    /// Where the workspace stands in the list; -1 where it isn't shown.
    Q_INVOKABLE int rowOf(const QString& workspaceId) const;

signals:
    void contentChanged();
    void sheetChanged();
    /// The rows are those of another search.
    void searched();
    /// What those should hear who don't see it: how a start or finish goes on, an empty search.
    void announced(const QString& text);
    /// The workspace that was expected is there.
    void added(const QString& workspaceId);

private:
    const Workspace* workspaceOf(const QString& workspaceId) const;
    /// Runs outside of the press that led here, since it puts a question.
    template <typename Action>
    void later(const QString& workspaceId, Action action);
    void tellOfNew();
    void announce(bool isSameSearch);
    const CardRow* rowToFinish() const;
    ResourceListModel* resourcesOf(const Uuid& workspace) const;
    static std::vector<CardRow> currentRows(WorkspaceListState& state, const WorkspaceStore& store);
    void refresh();
    void dropCollapsedResources();

    WorkspaceListState& state_;
    WorkspaceStore& store_;
    const MakeSheet makeEditSheet_;
    const MakeResources makeResources_;
    /// Those that a card was expanded for and came into sight.
    mutable std::map<Uuid, std::unique_ptr<ResourceListModel>> resources_;
    /// What the rows were last filtered by, and which workspaces there were.
    std::string shownSearch_;
    std::set<Uuid> known_;
    bool expectsNew_ = false;
    /// What the shown cards say of their starts and finishes.
    std::map<RecordKey, std::string> progress_;
    SheetHolder<WorkspaceSheetModel> editSheet_{[this] { emit sheetChanged(); }};
    ChangeRelay relay_;
};

} // namespace corvane
