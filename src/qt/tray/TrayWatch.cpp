#include "qt/tray/TrayWatch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string>

#include <xcb/xcb.h>

namespace corvane {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

/// Null on another platform than X11.
xcb_connection_t* display() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

int screenNumber() {
    char* host = nullptr;
    int number = 0, screen = 0;
    if (xcb_parse_display(nullptr, &host, &number, &screen)) std::free(host);
    return screen;
}

xcb_atom_t atom(const std::string& name) {
    const auto cookie = xcb_intern_atom(display(), false, std::uint16_t(name.size()), name.c_str());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(display(), cookie, nullptr));
    return reply ? reply->atom : XCB_NONE;
}

} // namespace

TrayWatch::TrayWatch() {
    watchBus();
    if (display()) watchDisplay();
}

TrayWatch::~TrayWatch() {
    qGuiApp->removeNativeEventFilter(this);
}

void TrayWatch::watchBus() {
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    auto* owners =
        new QDBusServiceWatcher(watcherName(), bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayWatch::askForHost);
    const auto listen = [&](const char* signal, const char* slot) {
        bus.connect(watcherName(), watcherPath(), watcherName(), signal, this, slot);
    };
    listen("StatusNotifierHostRegistered", SLOT(askForHost()));
    listen("StatusNotifierHostUnregistered", SLOT(askForHost()));
    askForHost();
}

void TrayWatch::askForHost() {
    hasHost_.reset();
    auto call = QDBusMessage::createMethodCall(watcherName(), watcherPath(),
                                               QStringLiteral("org.freedesktop.DBus.Properties"),
                                               QStringLiteral("Get"));
    call << watcherName() << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, answer, question = ++question_] {
                const QDBusPendingReply<QDBusVariant> reply = *answer;
                answer->deleteLater();
                if (question != question_) return;
                hasHost_ = reply.isValid() && reply.value().variant().toBool();
                emit changed();
            });
}

TrayKind TrayWatch::kind() const {
    if (!hasHost_) return TrayKind::none;
    if (*hasHost_) return TrayKind::host;
    return hasSelectionOwner() ? TrayKind::display : TrayKind::none;
}

/// Who becomes the owner of the selection tells all that listen to the root window.
void TrayWatch::watchDisplay() {
    const int number = screenNumber();
    manager_ = atom("MANAGER");
    selection_ = atom("_NET_SYSTEM_TRAY_S" + std::to_string(number));
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(display()));
    for (int i = 0; i < number && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    const auto root = screens.data->root;
    const auto cookie = xcb_get_window_attributes(display(), root);
    const Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(display(), cookie, nullptr));
    if (!attributes) return;
    const std::uint32_t mask = attributes->your_event_mask | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(display(), root, XCB_CW_EVENT_MASK, &mask);
    qGuiApp->installNativeEventFilter(this);
}

bool TrayWatch::hasSelectionOwner() const {
    if (selection_ == XCB_NONE) return false;
    const auto cookie = xcb_get_selection_owner(display(), selection_);
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(display(), cookie, nullptr));
    return reply && reply->owner != XCB_NONE;
}

bool TrayWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    constexpr std::uint8_t sentByClient = 0x80;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & ~sentByClient) != XCB_CLIENT_MESSAGE) return false;
    const auto* told = static_cast<const xcb_client_message_event_t*>(message);
    if (told->type == manager_ && told->data.data32[1] == selection_) {
        // Once the toolkit has heard of it too.
        QMetaObject::invokeMethod(this, &TrayWatch::changed, Qt::QueuedConnection);
    }
    return false;
}

} // namespace corvane
