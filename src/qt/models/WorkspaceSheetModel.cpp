#include "qt/models/WorkspaceSheetModel.h"

#include "qt/items/Strings.h"
#include "ui/WorkspaceSheet.h"

namespace corvane {

WorkspaceSheetModel::WorkspaceSheetModel(std::unique_ptr<WorkspaceSheet> sheet)
    : sheet_(std::move(sheet)), relay_(sheet_->objectWillChange, [this] { emit changed(); }) {}

WorkspaceSheetModel::~WorkspaceSheetModel() = default;

QString WorkspaceSheetModel::title() const {
    return toQString(sheet_->title());
}

QString WorkspaceSheetModel::commitTitle() const {
    return toQString(sheet_->commitTitle());
}

QStringList WorkspaceSheetModel::availableIcons() const {
    QStringList icons;
    for (const auto icon : sheet_->availableIcons())
        icons.append(toQString(icon));
    return icons;
}

QString WorkspaceSheetModel::name() const {
    return toQString(sheet_->name.get());
}

void WorkspaceSheetModel::setName(const QString& name) {
    sheet_->name = name.toStdString();
}

QString WorkspaceSheetModel::description() const {
    return toQString(sheet_->description.get());
}

void WorkspaceSheetModel::setDescription(const QString& description) {
    sheet_->description = description.toStdString();
}

QString WorkspaceSheetModel::selectedIcon() const {
    return toQString(sheet_->selectedIcon.get());
}

void WorkspaceSheetModel::setSelectedIcon(const QString& icon) {
    sheet_->selectedIcon = icon.toStdString();
}

bool WorkspaceSheetModel::canCommit() const {
    return sheet_->canCommit();
}

void WorkspaceSheetModel::commit() {
    if (!canCommit()) return;
    sheet_->commit();
    emit closed();
}

} // namespace corvane
