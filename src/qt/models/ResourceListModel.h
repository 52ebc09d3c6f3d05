#pragma once

#include "qt/models/AddResourceModel.h"
#include "qt/models/ChangeRelay.h"
#include "qt/models/KeyedListModel.h"
#include "qt/models/SheetHolder.h"
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

    auto key() const { return row.key; }
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
    /// The sheet that adds or changes a resource while it is up, else null.
    Q_PROPERTY(corvane::AddResourceModel* addSheet READ addSheet NOTIFY sheetChanged)

public:
    enum Role {
        KeyRole = Qt::UserRole,
        NameRole,
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
        EditingRole,
        EditedNameRole,
        DropTargetRole,
        MissingRole,
        PathRole,
    };
    /// A sheet that adds a resource, or changes the one that is meant.
    using MakeSheet =
        std::function<std::unique_ptr<AddResourceSheet>(const std::optional<RecordKey>&)>;

    ResourceListModel(std::unique_ptr<ResourceManagement> state, MakeSheet makeSheet);
    ~ResourceListModel() override;

    /// `key` (which names the resource to what follows), `name`, `opens`, `type` ("url"), `symbol`,
    /// `iconSource`, `isEnabled`, `isRunning`, `chips` (objects with `appName`, `isDefault` and
    /// `iconSource`), `playTooltip`, `enabledTooltip`, `separatorTitle`, `isEditing`, `editedName`,
    /// `isRowTarget`, `isMissing` and `path`.
    QHash<int, QByteArray> roleNames() const override;
    QVariant data(const QModelIndex& index, int role) const override;

    int count() const { return rowCount(); }
    bool isDropTarget() const { return state_->isAddResourceDropTarget; }
    AddResourceModel* addSheet() const { return sheet_.sheet(); }

    /// Where the resource stands in the list; -1 where it has gone.
    Q_INVOKABLE int rowOf(const QString& key) const;
    Q_INVOKABLE void openAddSheet();
    Q_INVOKABLE void edit(const QString& key);
    Q_INVOKABLE void addSeparator() { state_->addSeparator(); }
    Q_INVOKABLE void remove(const QString& key);
    Q_INVOKABLE void moveBy(const QString& key, int by);
    Q_INVOKABLE void toggleEnabled(const QString& key);
    Q_INVOKABLE void pressPlay(const QString& key);
    Q_INVOKABLE void beginRenaming(const QString& key);
    Q_INVOKABLE void setEditedName(const QString& key, const QString& name);
    Q_INVOKABLE void submitName(const QString& key);
    Q_INVOKABLE void cancelRenaming(const QString& key);
    Q_INVOKABLE void chooseApplication(const QString& key);
    Q_INVOKABLE void locate(const QString& key);
    Q_INVOKABLE void removeApplication(const QString& key, const QString& appName);

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
    template <typename... Parameters, typename... Arguments>
    void act(const QString& key,
             void (ResourceManagement::*action)(const RecordKey&, Parameters...),
             Arguments&&... arguments);
    static std::vector<ResourceListRow> currentRows(const ResourceManagement& state);

    std::unique_ptr<ResourceManagement> state_;
    const MakeSheet makeSheet_;
    SheetHolder<AddResourceModel> sheet_{[this] { emit sheetChanged(); }};
    ChangeRelay relay_;
};

} // namespace corvane
