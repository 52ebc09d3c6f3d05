#include "qt/models/PanelModel.h"

#include "foundation/Text.h"
#include "foundation/Url.h"
#include "platform/FileIcons.h"
#include "qt/items/IconProvider.h"
#include "qt/items/Strings.h"

#include <algorithm>

namespace corvane {

namespace {

/// Names on a disk may be any bytes.
QString shown(std::string_view name) {
    return toQString(text::replacingInvalidUtf8(name));
}

QString symbolFor(EntryKind kind) {
    switch (kind) {
    case EntryKind::folder:
        return QStringLiteral("folder.fill");
    case EntryKind::application:
        return QStringLiteral("app.badge");
    default:
        return QStringLiteral("doc.fill");
    }
}

} // namespace

PanelModel::PanelModel(std::unique_ptr<FilePanel> panel, const FileIcons& fileIcons)
    : panel_(std::move(panel)), icons_(fileIcons), rows_(panel_->entries()),
      rowsFolder_(panel_->folder()), relay_(panel_->objectWillChange, [this] { refresh(); }) {}

int PanelModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

QHash<int, QByteArray> PanelModel::roleNames() const {
    return {{TitleRole, "title"}, {SymbolRole, "symbol"}, {IconSourceRole, "iconSource"}};
}

QVariant PanelModel::data(const QModelIndex& index, int role) const {
    if (index.row() < 0 || index.row() >= rowCount()) return {};
    const auto& entry = rows_[std::size_t(index.row())];
    switch (role) {
    case TitleRole:
        return shown(FilePanel::titleOf(entry));
    case SymbolRole:
        return symbolFor(entry.kind);
    case IconSourceRole:
        if (entry.kind != EntryKind::application) return QString();
        return iconSource(icons_.iconForFile(path::join(rowsFolder_, entry.name)));
    default:
        return {};
    }
}

void PanelModel::refresh() {
    if (rows_ != panel_->entries() || rowsFolder_ != panel_->folder()) {
        beginResetModel();
        rows_ = panel_->entries();
        rowsFolder_ = panel_->folder();
        endResetModel();
    }
    emit changed();
}

QString PanelModel::title() const {
    return toQString(panel_->title());
}

QString PanelModel::message() const {
    return toQString(panel_->message());
}

QString PanelModel::confirmTitle() const {
    return toQString(panel_->confirmTitle());
}

QVariantList PanelModel::shortcuts() const {
    QVariantList places;
    for (const auto& place : panel_->shortcuts())
        places.append(
            QVariantMap{{"title", shown(place.title)}, {"symbol", toQString(place.symbol)}});
    return places;
}

int PanelModel::currentShortcut() const {
    const auto shortcuts = panel_->shortcuts();
    const auto found = std::ranges::find(shortcuts, panel_->folder(), &PanelPlace::path);
    return found == shortcuts.end() ? -1 : int(found - shortcuts.begin());
}

QStringList PanelModel::ancestors() const {
    QStringList titles;
    for (const auto& place : panel_->ancestors())
        titles.append(shown(place.title));
    return titles;
}

QString PanelModel::emptyText() const {
    return toQString(panel_->emptyText());
}

QString PanelModel::problem() const {
    return shown(panel_->problem());
}

QString PanelModel::name() const {
    return shown(panel_->name());
}

void PanelModel::setName(const QString& name) {
    panel_->setName(name.toStdString());
}

void PanelModel::setShowsHidden(bool shows) {
    panel_->setShowsHidden(shows);
}

int PanelModel::selected() const {
    return panel_->selected() ? int(*panel_->selected()) : -1;
}

void PanelModel::goToShortcut(int index) {
    const auto places = panel_->shortcuts();
    if (index >= 0 && index < int(places.size())) panel_->goTo(places[std::size_t(index)].path);
}

void PanelModel::goToAncestor(int index) {
    const auto places = panel_->ancestors();
    if (index >= 0 && index < int(places.size())) panel_->goTo(places[std::size_t(index)].path);
}

void PanelModel::goUp() {
    panel_->goUp();
}

void PanelModel::select(int row) {
    if (row >= 0) panel_->select(std::size_t(row));
}

void PanelModel::typeAhead(const QString& text) {
    constexpr qint64 pause = 1000;
    if (!sinceTyped_.isValid() || sinceTyped_.hasExpired(pause)) typed_.clear();
    sinceTyped_.start();
    typed_ += text;
    panel_->selectByPrefix(typed_.toStdString());
}

void PanelModel::activate(int row) {
    if (row >= 0) take(panel_->activate(std::size_t(row)));
}

void PanelModel::confirm() {
    take(panel_->confirm());
}

void PanelModel::cancel() {
    emit answered(std::nullopt);
}

void PanelModel::take(const std::optional<std::string>& path) {
    if (path) emit answered(path);
}

} // namespace corvane
