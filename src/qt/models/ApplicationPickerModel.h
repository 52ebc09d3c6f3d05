#pragma once

#include "qt/models/ChangeRelay.h"
#include "ui/ApplicationPicker.h"

#include <QAbstractListModel>
#include <vector>

#include <QtQml/qqmlregistration.h>

namespace corvane {

class Applications;
class FileIcons;
struct OpenPanel;

/// The picker of an application for its window: the applications as rows, all else as properties.
class ApplicationPickerModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program for each panel")
    Q_PROPERTY(QString title MEMBER title_ CONSTANT)
    Q_PROPERTY(QString message MEMBER message_ CONSTANT)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY changed)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed)
    /// -1 where no row is.
    Q_PROPERTY(int selected READ selected NOTIFY changed)

public:
    enum Role { NameRole = Qt::UserRole, IconSourceRole };

    /// The icons outlive the model.
    ApplicationPickerModel(const OpenPanel& panel, const Applications& applications,
                           const FileIcons& icons);

    int rowCount(const QModelIndex& parent = {}) const override;
    /// `name` and `iconSource`.
    QHash<int, QByteArray> roleNames() const override;
    QVariant data(const QModelIndex& index, int role) const override;

    QString searchText() const;
    void setSearchText(const QString& text);
    QString emptyText() const;
    int selected() const { return picker_.selected() ? int(*picker_.selected()) : -1; }

    Q_INVOKABLE void select(int row);
    Q_INVOKABLE void moveSelection(int by) { picker_.moveSelection(by); }
    /// Ends the panel with the selected application; nothing while there is none.
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void cancel() { emit answered(std::nullopt); }

signals:
    void changed();
    /// The panel has ended: with a path, or with nothing.
    void answered(const std::optional<std::string>& path);

private:
    void refresh();

    ApplicationPicker picker_;
    const FileIcons& icons_;
    const QString title_;
    const QString message_;
    /// What the rows show, while the picker may be ahead of them.
    std::vector<ApplicationPicker::Entry> rows_;
    ChangeRelay relay_;
};

} // namespace corvane
