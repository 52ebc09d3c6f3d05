#pragma once

#include "qt/models/ChangeRelay.h"
#include "ui/FilePanel.h"

#include <QAbstractListModel>
#include <QElapsedTimer>
#include <QStringList>
#include <QVariantList>
#include <memory>

#include <QtQml/qqmlregistration.h>

namespace corvane {

class FileIcons;

/// A file panel for its window: its entries as rows, all else as properties.
class PanelModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program for each panel")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)
    Q_PROPERTY(QString confirmTitle READ confirmTitle CONSTANT)
    Q_PROPERTY(bool isSaving READ isSaving CONSTANT)
    Q_PROPERTY(bool takesName READ takesName CONSTANT)
    /// Objects with `title` and `symbol`.
    Q_PROPERTY(QVariantList shortcuts READ shortcuts CONSTANT)
    /// The shortcut that leads here; -1 where none does.
    Q_PROPERTY(int currentShortcut READ currentShortcut NOTIFY changed)
    Q_PROPERTY(QStringList ancestors READ ancestors NOTIFY changed)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(bool showsHidden READ showsHidden WRITE setShowsHidden NOTIFY changed)
    /// -1 where no row is.
    Q_PROPERTY(int selected READ selected NOTIFY changed)
    Q_PROPERTY(bool canConfirm READ canConfirm NOTIFY changed)

public:
    enum Role { TitleRole = Qt::UserRole, SymbolRole, IconSourceRole };

    /// The fileIcons outlive the model.
    PanelModel(std::unique_ptr<FilePanel> panel, const FileIcons& fileIcons);

    int rowCount(const QModelIndex& parent = {}) const override;
    /// `title`, `symbol` (a symbol's name) and `iconSource` (the icon of an application, where
    /// there is one).
    QHash<int, QByteArray> roleNames() const override;
    QVariant data(const QModelIndex& index, int role) const override;

    QString title() const;
    QString message() const;
    QString confirmTitle() const;
    bool isSaving() const { return panel_->isSaving(); }
    bool takesName() const { return panel_->takesName(); }
    QVariantList shortcuts() const;
    int currentShortcut() const;
    QStringList ancestors() const;
    QString emptyText() const;
    QString problem() const;
    QString name() const;
    void setName(const QString& name);
    bool showsHidden() const { return panel_->showsHidden(); }
    void setShowsHidden(bool shows);
    int selected() const;
    bool canConfirm() const { return panel_->canConfirm(); }

    Q_INVOKABLE void goToShortcut(int index);
    Q_INVOKABLE void goToAncestor(int index);
    Q_INVOKABLE void goUp();
    Q_INVOKABLE void select(int row);
    /// Selects by what is typed; a pause starts anew.
    Q_INVOKABLE void typeAhead(const QString& text);
    Q_INVOKABLE void activate(int row);
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void cancel();

signals:
    void changed();
    /// The panel has ended: with a path, or with nothing.
    void answered(const std::optional<std::string>& path);

private:
    void refresh();
    void take(const std::optional<std::string>& path);

    const std::unique_ptr<FilePanel> panel_;
    const FileIcons& icons_;
    /// What the rows show, while the panel may be ahead of them.
    std::vector<DirectoryEntry> rows_;
    std::string rowsFolder_;
    QString typed_;
    QElapsedTimer sinceTyped_;
    ChangeRelay relay_;
};

} // namespace corvane
