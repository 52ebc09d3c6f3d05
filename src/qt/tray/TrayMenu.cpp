#include "qt/tray/TrayMenu.h"

#include "qt/items/Pictures.h"
#include "qt/items/Strings.h"

#include <QBuffer>
#include <QPixmap>
#include <algorithm>

namespace corvane {

namespace {

constexpr int root = 0;

bool looksLike(const MenuItem& a, const MenuItem& b) {
    return a.title == b.title && a.isEnabled == b.isEnabled && a.state == b.state &&
           a.image == b.image && a.isSeparator == b.isSeparator;
}

QByteArray picture(const Image& image) {
    QBuffer png;
    const auto size = int(image.size);
    iconOf(image).pixmap(size, size).save(&png, "PNG");
    return png.data();
}

} // namespace

/// The items between the first and the last that look new get new numbers.
void TrayMenu::show(Menu menu) {
    const auto same = std::ranges::mismatch(menu_, menu, looksLike).in1 - menu_.begin();
    const auto shorter = std::ptrdiff_t(std::min(menu_.size(), menu.size()));
    std::ptrdiff_t sameAtEnd = 0;
    while (sameAtEnd < shorter - same &&
           looksLike(*(menu_.end() - 1 - sameAtEnd), *(menu.end() - 1 - sameAtEnd)))
        ++sameAtEnd;
    const bool looksNew = std::ssize(menu_) != std::ssize(menu) || same != std::ssize(menu);
    std::vector<int> ids(ids_.begin(), ids_.begin() + same);
    while (std::ssize(ids) < std::ssize(menu) - sameAtEnd)
        ids.push_back(++lastId_);
    ids.insert(ids.end(), ids_.end() - sameAtEnd, ids_.end());
    menu_ = std::move(menu);
    ids_ = std::move(ids);
    if (looksNew) emit LayoutUpdated(++revision_, root);
}

std::ptrdiff_t TrayMenu::indexOf(int id) const {
    const auto found = std::ranges::find(ids_, id);
    return found == ids_.end() ? -1 : found - ids_.begin();
}

QVariantMap TrayMenu::propertiesOf(int id) {
    if (id == root) return {{"children-display", "submenu"}};
    const auto index = indexOf(id);
    if (index < 0) return {};
    const auto& item = menu_[std::size_t(index)];
    if (item.isSeparator) return {{"type", "separator"}};
    // An underscore would mark the letter behind it, and a tab begin another column.
    QVariantMap properties{{"label", toQString(item.title).replace('_', "__").replace('\t', ' ')},
                           {"enabled", item.isEnabled}};
    if (item.state) {
        properties["toggle-type"] = "checkmark";
        properties["toggle-state"] = int(*item.state);
    }
    if (item.image) {
        auto& data = pictures_[toQString(item.image->name)];
        if (data.isEmpty()) data = picture(*item.image);
        properties["icon-data"] = data;
    }
    return properties;
}

uint TrayMenu::GetLayout(int parentId, int recursionDepth, const QStringList&,
                         bus::MenuNode& layout) {
    layout = {parentId, propertiesOf(parentId), {}};
    if (parentId == root && recursionDepth != 0) {
        for (const int id : ids_) {
            const bus::MenuNode child{id, propertiesOf(id), {}};
            layout.children.append(QDBusVariant(QVariant::fromValue(child)));
        }
    }
    return revision_;
}

QList<bus::MenuProperties> TrayMenu::GetGroupProperties(const QList<int>& ids, const QStringList&) {
    QList<bus::MenuProperties> group;
    for (const int id : ids.isEmpty() ? QList<int>(ids_.begin(), ids_.end()) : ids)
        group.append({id, propertiesOf(id)});
    return group;
}

QDBusVariant TrayMenu::GetProperty(int id, const QString& name) {
    return QDBusVariant(propertiesOf(id).value(name, QString()));
}

void TrayMenu::Event(int id, const QString& eventId, const QDBusVariant&, uint) {
    const auto index = indexOf(id);
    if (eventId != "clicked" || index < 0) return;
    const auto& item = menu_[std::size_t(index)];
    if (!item.isEnabled || !item.action) return;
    QMetaObject::invokeMethod(this, [action = item.action] { action(); }, Qt::QueuedConnection);
}

QList<int> TrayMenu::EventGroup(const QList<bus::MenuEvent>& events) {
    QList<int> unknown;
    for (const auto& event : events) {
        if (event.id != root && indexOf(event.id) < 0) unknown.append(event.id);
        Event(event.id, event.name, event.data, event.timestamp);
    }
    return unknown;
}

bool TrayMenu::AboutToShow(int) {
    constexpr bool needsUpdate = false;
    return needsUpdate;
}

QList<int> TrayMenu::AboutToShowGroup(const QList<int>&, QList<int>&) {
    return {};
}

} // namespace corvane
