#include "qt/models/ApplicationPickerModel.h"

#include "platform/FileIcons.h"
#include "platform/Panels.h"
#include "qt/items/IconProvider.h"
#include "qt/items/Strings.h"

namespace corvane {

ApplicationPickerModel::ApplicationPickerModel(const OpenPanel& panel,
                                               const Applications& applications,
                                               const FileIcons& icons)
    : picker_(applications), icons_(icons), title_(toQString(panel.title)),
      message_(toQString(panel.message)), rows_(picker_.entries()),
      relay_(picker_.objectWillChange, [this] { refresh(); }) {}

int ApplicationPickerModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(rows_.size());
}

QHash<int, QByteArray> ApplicationPickerModel::roleNames() const {
    return {{NameRole, "name"}, {IconSourceRole, "iconSource"}};
}

QVariant ApplicationPickerModel::data(const QModelIndex& index, int role) const {
    if (index.row() < 0 || index.row() >= rowCount()) return {};
    const auto& entry = rows_[std::size_t(index.row())];
    if (role == NameRole) return toQString(entry.name);
    if (role == IconSourceRole) return iconSource(icons_.iconForFile(entry.path));
    return {};
}

void ApplicationPickerModel::refresh() {
    if (rows_ != picker_.entries()) {
        beginResetModel();
        rows_ = picker_.entries();
        endResetModel();
    }
    emit changed();
}

QString ApplicationPickerModel::searchText() const {
    return toQString(picker_.searchText());
}

void ApplicationPickerModel::setSearchText(const QString& text) {
    picker_.setSearchText(text.toStdString());
}

QString ApplicationPickerModel::emptyText() const {
    return toQString(picker_.emptyText());
}

void ApplicationPickerModel::select(int row) {
    // The rows may be a turn behind the picker.
    if (row >= 0 && rows_ == picker_.entries()) picker_.select(std::size_t(row));
}

void ApplicationPickerModel::confirm() {
    if (const auto path = picker_.chosen()) emit answered(path);
}

} // namespace corvane
