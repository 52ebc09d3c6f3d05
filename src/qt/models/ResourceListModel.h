#pragma once

#include "qt/models/AddResourceModel.h"
#include "qt/models/ChangeRelay.h"
#include "qt/models/KeyedListModel.h"
#ifndef Q_MOC_RUN // Which can't read what this includes.
#include "ui/ResourceManagement.h"
#endif

#include <QUrl>
#include <functional>
#include <memory>

#include <QtQml/qqmlregistration.h>

namespace corvane {

class AddResourceSheet;

/// A row as its view shows it.
struct ResourceListRow {
    ResourceRow row;
    /// A drag of a row hovers over it.
    bool isDropTarget = false;
    /// Counts the rows of one identifier, from 0.
    int repetition = 0;

    auto key() const { return std::pair(row.id, repetition); }
    bool operator==(const ResourceListRow&) const = default;
};

/// The resources of one expanded card.
class ResourceListModel : public KeyedListModel<ResourceListRow> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its card")
    Q_PROPERTY(int count READ count NOTIFY changed)
    /// A drag of files hovers over the list.
    Q_PROPERTY(bool isDropTarget READ isDropTarget NOTIFY changed)
    /// The sheet that adds a resource while it is up, else null.
    Q_PROPERTY(corvane::AddResourceModel* addSheet READ addSheet NOTIFY sheetChanged)

public:
    enum Role {
        NameRole = Qt::UserRole,
        OpensRole,
        TypeRole,
        SymbolRole,
        IconSourceRole,
        EnabledRole,
        RunningRole,
        ChipsRole,
        PlayTooltipRole,
        EnabledTooltipRole,
        SeparatorTitleRole,
        DropTargetRole,
    };
    using MakeSheet = std::function<std::unique_ptr<AddResourceSheet>()>;

    ResourceListModel(std::unique_ptr<ResourceManagement> state, MakeSheet makeSheet);
    ~ResourceListModel() override;

    /// `name`, `opens`, `type` ("url"), `symbol`, `iconSource`, `isEnabled`, `isRunning`, `chips`
    /// (objects with `appName`, `isDefault` and `iconSource`), `playTooltip`, `enabledTooltip`,
    /// `separatorTitle` and `isRowTarget`.
    QHash<int, QByteArray> roleNames() const override;
    QVariant data(const QModelIndex& index, int role) const override;

    int count() const { return rowCount(); }
    bool isDropTarget() const { return state_->isAddResourceDropTarget; }
    AddResourceModel* addSheet() const { return sheet_.get(); }

    Q_INVOKABLE void openAddSheet();
    Q_INVOKABLE void addSeparator() { state_->addSeparator(); }
    Q_INVOKABLE void remove(int row);
    Q_INVOKABLE void move(int row, int to);
    Q_INVOKABLE void toggleEnabled(int row);
    Q_INVOKABLE void pressPlay(int row);
    Q_INVOKABLE void rename(int row, const QString& name);
    Q_INVOKABLE void chooseApplication(int row);
    Q_INVOKABLE void removeApplication(int row, const QString& appName);

    // A drag over the list, and one over a row: whether it is taken, and what it then does.
    Q_INVOKABLE bool enterList(const QList<QUrl>& urls);
    Q_INVOKABLE void leaveList();
    Q_INVOKABLE bool dropOnList(const QList<QUrl>& urls);
    Q_INVOKABLE bool enterRow(int row, const QList<QUrl>& urls, bool hasText, const QString& text);
    Q_INVOKABLE void leaveRow(int row);
    Q_INVOKABLE bool dropOnRow(int row, const QList<QUrl>& urls, bool hasText, const QString& text);

signals:
    void changed();
    void sheetChanged();

private:
    static std::vector<ResourceListRow> currentRows(const ResourceManagement& state);

    std::unique_ptr<ResourceManagement> state_;
    const MakeSheet makeSheet_;
    std::unique_ptr<AddResourceModel> sheet_;
    /// Until the next one, as its view goes a turn later.
    std::unique_ptr<AddResourceModel> closedSheet_;
    ChangeRelay relay_;
};

} // namespace corvane
