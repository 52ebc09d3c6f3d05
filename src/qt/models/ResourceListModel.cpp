#include "qt/models/ResourceListModel.h"

#include "qt/items/IconProvider.h"
#include "qt/items/Strings.h"
#include "ui/AddResourceSheet.h"
#include "ui/ResourceDrops.h"

#include <QSysInfo>
#include <algorithm>
#include <utility>

namespace corvane {

namespace {

/// A file's address may name another machine.
bool isOfThisMachine(const QUrl& url) {
    const auto host = url.host();
    return url.isLocalFile() && (host.isEmpty() || host == QLatin1String("localhost") ||
                                 host == QSysInfo::machineHostName().toLower());
}

DropInfo dropInfo(const QList<QUrl>& urls, bool hasText = false, const QString& text = {}) {
    DropInfo info;
    for (const auto& url : urls) {
        if (!isOfThisMachine(url)) continue;
        // The toolkit leaves these two as they are, which no address may hold in its path.
        const auto encoded = url.toEncoded().replace('[', "%5B").replace(']', "%5D");
        info.fileUrls.push_back(encoded.toStdString());
    }
    if (hasText) info.text = text.toStdString();
    return info;
}

QVariantList chipsOf(const RowPictures& pictures) {
    QVariantList chips;
    for (const auto& chip : pictures.chips) {
        chips.append(QVariantMap{{"appName", toQString(chip.appName)},
                                 {"isDefault", chip.isDefault},
                                 {"iconSource", iconSource(chip.icon)}});
    }
    return chips;
}

} // namespace

ResourceListModel::ResourceListModel(std::unique_ptr<ResourceManagement> state, MakeSheet makeSheet)
    : KeyedListModel(currentRows(*state)), state_(std::move(state)),
      makeSheet_(std::move(makeSheet)), relay_(state_->objectWillChange, [this] {
          show(currentRows(*state_));
          emit changed();
      }) {}

ResourceListModel::~ResourceListModel() = default;

std::vector<ResourceListRow> ResourceListModel::currentRows(const ResourceManagement& state) {
    std::vector<ResourceListRow> rows;
    for (auto& row : state.rows())
        rows.push_back({std::move(row), state.dropTargetIndexes->contains(rows.size())});
    return rows;
}

QHash<int, QByteArray> ResourceListModel::roleNames() const {
    return {{KeyRole, "key"},
            {NameRole, "name"},
            {OpensRole, "opens"},
            {TypeRole, "type"},
            {SymbolRole, "symbol"},
            {IconSourceRole, "iconSource"},
            {EnabledRole, "isEnabled"},
            {RunningRole, "isRunning"},
            {ChipsRole, "chips"},
            {PlayTooltipRole, "playTooltip"},
            {EnabledTooltipRole, "enabledTooltip"},
            {SeparatorTitleRole, "separatorTitle"},
            {EditingRole, "isEditing"},
            {EditedNameRole, "editedName"},
            {DropTargetRole, "isRowTarget"},
            {MissingRole, "isMissing"},
            {PathRole, "path"}};
}

QVariant ResourceListModel::data(const QModelIndex& index, int role) const {
    const auto* found = rowAt(index.row());
    if (!found) return {};
    const auto& row = found->row;
    switch (role) {
    case KeyRole:
        return toQString(row.key.toString());
    case NameRole:
        return onOneLine(row.name);
    case OpensRole:
        return toQString(row.opens);
    case TypeRole:
        return toQString(rawValue(row.type));
    case SymbolRole:
        return toQString(symbolName(row.type));
    case IconSourceRole:
        return iconSource(state_->picturesOf(row).icon);
    case EnabledRole:
        return row.enabled;
    case RunningRole:
        return row.isRunning;
    case ChipsRole:
        return chipsOf(state_->picturesOf(row));
    case PlayTooltipRole:
        return onOneLine(playTooltip(row));
    case EnabledTooltipRole:
        return toQString(enabledTooltip(row));
    case SeparatorTitleRole:
        return onOneLine(separatorTitle(row.name));
    case EditingRole:
        return row.editedName.has_value();
    case EditedNameRole:
        return toQString(row.editedName.value_or(""));
    case DropTargetRole:
        return found->isDropTarget;
    case MissingRole:
        return row.isMissing;
    case PathRole:
        return toQString(row.path);
    default:
        return {};
    }
}

int ResourceListModel::rowOf(const QString& key) const {
    const auto record = RecordKey::parse(key.toStdString());
    const auto found =
        record ? std::ranges::find(rows(), *record, &ResourceListRow::key) : rows().end();
    return found == rows().end() ? -1 : int(found - rows().begin());
}

void ResourceListModel::openAddSheet() {
    sheet_.open(std::make_unique<AddResourceModel>(makeSheet_(std::nullopt)));
}

void ResourceListModel::edit(const QString& key) {
    const auto record = RecordKey::parse(key.toStdString());
    if (!record) return;
    // The menu that led here goes first.
    QMetaObject::invokeMethod(
        this,
        [this, record] { sheet_.open(std::make_unique<AddResourceModel>(makeSheet_(record))); },
        Qt::QueuedConnection);
}

template <typename... Parameters, typename... Arguments>
void ResourceListModel::act(const QString& key,
                            void (ResourceManagement::*action)(const RecordKey&, Parameters...),
                            Arguments&&... arguments) {
    const auto record = RecordKey::parse(key.toStdString());
    if (record) (state_.get()->*action)(*record, std::forward<Arguments>(arguments)...);
}

void ResourceListModel::remove(const QString& key) {
    act(key, &ResourceManagement::removeRow);
}

void ResourceListModel::moveBy(const QString& key, int by) {
    act(key, &ResourceManagement::moveRowBy, by);
}

void ResourceListModel::toggleEnabled(const QString& key) {
    act(key, &ResourceManagement::toggleEnabled);
}

void ResourceListModel::pressPlay(const QString& key) {
    act(key, &ResourceManagement::pressPlay);
}

void ResourceListModel::beginRenaming(const QString& key) {
    act(key, &ResourceManagement::beginRenaming);
}

void ResourceListModel::setEditedName(const QString& key, const QString& name) {
    act(key, &ResourceManagement::setEditedName, name.toStdString());
}

void ResourceListModel::submitName(const QString& key) {
    act(key, &ResourceManagement::submitName);
}

void ResourceListModel::cancelRenaming(const QString& key) {
    act(key, &ResourceManagement::cancelRenaming);
}

void ResourceListModel::chooseApplication(const QString& key) {
    act(key, &ResourceManagement::chooseApplication);
}

void ResourceListModel::locate(const QString& key) {
    // Outside of the press that led here, since a panel comes up.
    QMetaObject::invokeMethod(
        this, [this, key] { act(key, &ResourceManagement::locate); }, Qt::QueuedConnection);
}

void ResourceListModel::removeApplication(const QString& key, const QString& appName) {
    act(key, &ResourceManagement::removeApplication, appName.toStdString());
}

bool ResourceListModel::enterList(const QList<QUrl>& urls) {
    const auto info = dropInfo(urls);
    ResourceDropDelegate delegate(*state_);
    if (!delegate.validateDrop(info)) return false;
    delegate.dropEntered(info);
    return true;
}

void ResourceListModel::leaveList() {
    ResourceDropDelegate(*state_).dropExited();
}

bool ResourceListModel::dropOnList(const QList<QUrl>& urls) {
    ResourceDropDelegate delegate(*state_);
    const bool isTaken = delegate.performDrop(dropInfo(urls));
    // No other sign comes that the drag isn't there any more.
    delegate.dropExited();
    return isTaken;
}

bool ResourceListModel::enterRow(int row, const QList<QUrl>& urls, bool hasText,
                                 const QString& text) {
    const auto info = dropInfo(urls, hasText, text);
    ResourceReorderDelegate delegate(*state_, std::size_t(row));
    if (!rowAt(row) || !delegate.validateDrop(info)) return false;
    delegate.dropEntered(info);
    return true;
}

void ResourceListModel::leaveRow(int row) {
    ResourceReorderDelegate(*state_, std::size_t(row)).dropExited();
}

bool ResourceListModel::dropOnRow(int row, const QList<QUrl>& urls, bool hasText,
                                  const QString& text) {
    if (!rowAt(row)) return false;
    ResourceReorderDelegate delegate(*state_, std::size_t(row));
    const bool isTaken = delegate.performDrop(dropInfo(urls, hasText, text));
    delegate.dropExited();
    return isTaken;
}

} // namespace corvane
