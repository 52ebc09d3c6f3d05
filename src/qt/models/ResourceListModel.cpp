#include "qt/models/ResourceListModel.h"

#include "qt/items/IconProvider.h"
#include "qt/items/Strings.h"
#include "ui/AddResourceSheet.h"
#include "ui/ResourceDrops.h"

#include <map>

namespace corvane {

namespace {

DropInfo dropInfo(const QList<QUrl>& urls, bool hasText = false, const QString& text = {}) {
    DropInfo info;
    for (const auto& url : urls) {
        if (!url.isLocalFile()) continue;
        // The toolkit leaves these two as they are, which no address may hold in its path.
        const auto encoded = url.toEncoded().replace('[', "%5B").replace(']', "%5D");
        info.fileUrls.push_back(encoded.toStdString());
    }
    if (hasText) info.text = text.toStdString();
    return info;
}

QVariantList chipsOf(const ResourceRow& row) {
    QVariantList chips;
    for (const auto& chip : row.chips) {
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
    std::map<Uuid, int> seen;
    for (auto& row : state.rows()) {
        const auto index = rows.size();
        const int repetition = seen[row.id]++;
        rows.push_back({std::move(row), state.dropTargetIndexes->contains(index), repetition});
    }
    return rows;
}

QHash<int, QByteArray> ResourceListModel::roleNames() const {
    return {{NameRole, "name"},
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
            {DropTargetRole, "isRowTarget"}};
}

QVariant ResourceListModel::data(const QModelIndex& index, int role) const {
    const auto* found = rowAt(index.row());
    if (!found) return {};
    const auto& row = found->row;
    switch (role) {
    case NameRole:
        return toQString(row.name);
    case OpensRole:
        return toQString(row.opens);
    case TypeRole:
        return toQString(rawValue(row.type));
    case SymbolRole:
        return toQString(symbolName(row.type));
    case IconSourceRole:
        return iconSource(row.icon);
    case EnabledRole:
        return row.enabled;
    case RunningRole:
        return row.isRunning;
    case ChipsRole:
        return chipsOf(row);
    case PlayTooltipRole:
        return toQString(playTooltip(row));
    case EnabledTooltipRole:
        return toQString(enabledTooltip(row));
    case SeparatorTitleRole:
        return toQString(separatorTitle(row));
    case DropTargetRole:
        return found->isDropTarget;
    default:
        return {};
    }
}

void ResourceListModel::openAddSheet() {
    sheet_ = std::make_unique<AddResourceModel>(makeSheet_());
    connect(sheet_.get(), &AddResourceModel::closed, this, [this] {
        // The view says it once more when it has gone.
        if (!sheet_) return;
        closedSheet_ = std::move(sheet_);
        emit sheetChanged();
    });
    emit sheetChanged();
}

void ResourceListModel::remove(int row) {
    if (rowAt(row)) state_->removeRow(std::size_t(row));
}

void ResourceListModel::move(int row, int to) {
    if (rowAt(row) && rowAt(to)) state_->moveRow(std::size_t(row), std::size_t(to));
}

void ResourceListModel::toggleEnabled(int row) {
    if (rowAt(row)) state_->toggleEnabled(std::size_t(row));
}

void ResourceListModel::pressPlay(int row) {
    if (rowAt(row)) state_->pressPlay(std::size_t(row));
}

void ResourceListModel::rename(int row, const QString& name) {
    if (rowAt(row)) state_->rename(std::size_t(row), name.toStdString());
}

void ResourceListModel::chooseApplication(int row) {
    if (rowAt(row)) state_->chooseApplication(std::size_t(row));
}

void ResourceListModel::removeApplication(int row, const QString& appName) {
    if (rowAt(row)) state_->removeApplication(std::size_t(row), appName.toStdString());
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
