#pragma once

#include "qt/models/ChangeRelay.h"
#include "qt/models/KeyedListModel.h"
#include "qt/models/ResourceListModel.h"
#include "qt/models/SheetHolder.h"
#ifndef Q_MOC_RUN // Which can't read what this includes.
#include "qt/models/CardRow.h"
#endif

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include <QtQml/qqmlregistration.h>

namespace corvane {

struct Workspace;
class WorkspaceListState;

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
        CanSaveLayoutRole,
        StartTitleRole,
        StatusTextRole,
        ChipsRole,
        CounterRole,
    };
    using MakeSheet = std::function<std::unique_ptr<WorkspaceSheet>(const Workspace&)>;
    using MakeResources = std::function<std::unique_ptr<ResourceListModel>(const Uuid&)>;

    /// The state outlives the model.
    WorkspaceListModel(WorkspaceListState& state, MakeSheet makeEditSheet,
                       MakeResources makeResources);
    ~WorkspaceListModel() override;

    /// `workspaceId`, `name`, `description`, `icon` (a symbol's name), `gradient` (an index),
    /// `isRunning`, `isLoading`, `isExpanded`, `canSaveLayout`, `startTitle`, `statusText`, `chips`
    /// (a list of objects with `name`, `type` and `state`, the last two as "url" and "running") and
    /// `counter`.
    QHash<int, QByteArray> roleNames() const override;
    QVariant data(const QModelIndex& index, int role) const override;

    bool showsEmptySearch() const;
    bool showsEmptyWorkspaces() const;
    QString emptySearchMessage() const;
    QString finishMessage() const;
    WorkspaceSheetModel* editSheet() const { return editSheet_.sheet(); }

    Q_INVOKABLE void start(int row);
    /// Asks before it finishes.
    Q_INVOKABLE void requestFinish(int row);
    Q_INVOKABLE void confirmFinish();
    Q_INVOKABLE void cancelFinish();
    Q_INVOKABLE void saveLayout(int row);
    Q_INVOKABLE void toggleExpanded(int row);
    /// The resources of an expanded card, while it is expanded; null where the text is no
    /// identifier.
    Q_INVOKABLE corvane::ResourceListModel* resourcesOf(const QString& workspaceId);
    Q_INVOKABLE void edit(int row);
    Q_INVOKABLE void duplicate(int row);
    Q_INVOKABLE void remove(int row);
    Q_INVOKABLE void pressChip(int row, int chip);
    Q_INVOKABLE QString chipTooltip(int row, int chip) const;

signals:
    void contentChanged();
    void sheetChanged();

private:
    const Workspace* workspaceOf(int row) const;
    const CardRow* rowToFinish() const;
    static std::vector<CardRow> currentRows(WorkspaceListState& state);
    void refresh();
    void dropCollapsedResources();

    WorkspaceListState& state_;
    const MakeSheet makeEditSheet_;
    const MakeResources makeResources_;
    std::map<Uuid, std::unique_ptr<ResourceListModel>> resources_;
    /// What the rows were last filtered by.
    std::string shownSearch_;
    SheetHolder editSheet_;
    ChangeRelay relay_;
};

} // namespace corvane
