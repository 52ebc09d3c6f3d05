#pragma once

#include "qt/ChangeRelay.h"

#include <QAbstractListModel>
#include <vector>

#include <QtQml/qqmlregistration.h>

namespace corvane {

struct CardRow;
class WorkspaceListState;

/// The cards, as the search lets them through, one row a card. Rows keep their identity when the
/// list around them changes.
class WorkspaceListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its window")
    Q_PROPERTY(bool showsEmptySearch READ showsEmptySearch NOTIFY contentChanged)
    Q_PROPERTY(bool showsEmptyWorkspaces READ showsEmptyWorkspaces NOTIFY contentChanged)
    Q_PROPERTY(QString emptySearchMessage READ emptySearchMessage NOTIFY contentChanged)

public:
    enum Role {
        NameRole = Qt::UserRole,
        DescriptionRole,
        IconRole,
        GradientRole,
        IsRunningRole,
        IsLoadingRole,
        StartTitleRole,
        StatusTextRole,
    };

    /// The state outlives the model.
    explicit WorkspaceListModel(WorkspaceListState& state);
    ~WorkspaceListModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    /// Under `name`, `description`, `icon` (a symbol's name), `gradient` (an index), `isRunning`,
    /// `isLoading`, `startTitle` and `statusText`.
    QHash<int, QByteArray> roleNames() const override;
    QVariant data(const QModelIndex& index, int role) const override;

    bool showsEmptySearch() const;
    bool showsEmptyWorkspaces() const;
    QString emptySearchMessage() const;

    /// Starts the workspace of that row; nothing for a row that isn't there.
    Q_INVOKABLE void start(int row);

signals:
    void contentChanged();

private:
    std::vector<CardRow> currentRows() const;
    void refresh();
    void removeRowsNotIn(const std::vector<CardRow>& next);
    void insertAndMoveTo(const std::vector<CardRow>& next);
    void updateTo(const std::vector<CardRow>& next);

    WorkspaceListState& state_;
    std::vector<CardRow> rows_;
    ChangeRelay relay_;
};

} // namespace corvane
