#include "qt/models/AddResourceModel.h"

#include "qt/items/Strings.h"
#include "ui/AddResourceSheet.h"

namespace corvane {

AddResourceModel::AddResourceModel(std::unique_ptr<AddResourceSheet> sheet)
    : sheet_(std::move(sheet)), relay_(sheet_->objectWillChange, [this] { emit changed(); }) {}

AddResourceModel::~AddResourceModel() = default;

QString AddResourceModel::title() const {
    return toQString(sheet_->title());
}

QString AddResourceModel::subtitle() const {
    return toQString(sheet_->subtitle());
}

QString AddResourceModel::addTitle() const {
    return toQString(sheet_->addTitle());
}

QString AddResourceModel::enabledTitle() const {
    return toQString(sheet_->enabledTitle());
}

QVariantList AddResourceModel::tiles() const {
    QVariantList tiles;
    for (const auto type : AddResourceSheet::resourceTypes) {
        tiles.append(QVariantMap{{"type", toQString(rawValue(type))},
                                 {"title", toQString(factsOf(type).title)},
                                 {"symbol", toQString(symbolName(type))}});
    }
    return tiles;
}

QString AddResourceModel::type() const {
    return toQString(rawValue(sheet_->selectedResourceType));
}

QString AddResourceModel::name() const {
    return toQString(sheet_->resourceName.get());
}

void AddResourceModel::setName(const QString& name) {
    sheet_->resourceName = name.toStdString();
}

QString AddResourceModel::path() const {
    return toQString(sheet_->resourcePath.get());
}

void AddResourceModel::setPath(const QString& path) {
    sheet_->setPath(path.toStdString());
}

bool AddResourceModel::enabledByDefault() const {
    return sheet_->enabledByDefault;
}

void AddResourceModel::setEnabledByDefault(bool enabled) {
    sheet_->enabledByDefault = enabled;
}

QString AddResourceModel::pathHeading() const {
    return toQString(sheet_->pathHeading());
}

QString AddResourceModel::pathPrompt() const {
    return toQString(sheet_->pathPrompt());
}

bool AddResourceModel::isPicked() const {
    return factsOf(sheet_->selectedResourceType).isInFileSystem;
}

QString AddResourceModel::pickerTitle() const {
    return toQString(sheet_->pickerTitle());
}

QString AddResourceModel::pickerSymbol() const {
    return toQString(sheet_->pickerSymbol());
}

QString AddResourceModel::statusText() const {
    return toQString(sheet_->statusText());
}

bool AddResourceModel::isStatusValid() const {
    return sheet_->isStatusValid();
}

bool AddResourceModel::canAdd() const {
    return sheet_->canAdd();
}

void AddResourceModel::select(const QString& type) {
    if (const auto found = resourceTypeFromRawValue(type.toStdString())) sheet_->select(*found);
}

void AddResourceModel::pick() {
    // Outside of the press that led here, since a panel comes up.
    QMetaObject::invokeMethod(this, [this] { sheet_->pick(); }, Qt::QueuedConnection);
}

void AddResourceModel::add() {
    if (!canAdd()) return;
    sheet_->add();
    emit closed();
}

} // namespace corvane
