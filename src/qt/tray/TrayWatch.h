#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <cstdint>
#include <optional>

namespace corvane {

enum class TrayKind {
    none,
    /// A host of StatusNotifier items on the session bus.
    host,
    /// On X11, an owner of the display's tray selection.
    display,
};

/// Which tray the desktop has. Of two it is the host, and none as long as the bus hasn't answered.
/// Waits for no answer of the bus.
class TrayWatch : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// With an application object.
    TrayWatch();
    ~TrayWatch() override;

    TrayKind kind() const;

    static QString watcherName() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }
    static QString watcherPath() { return QStringLiteral("/StatusNotifierWatcher"); }

signals:
    /// A tray may have come, in the place of another one too, or a host has gone.
    void changed();

private slots:
    void askForHost();

private:
    bool hasSelectionOwner() const;
    void watchBus();
    void watchDisplay();
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    /// Nothing while the bus is asked.
    std::optional<bool> hasHost_ = false;
    /// Counts the questions, as only the answer to the last one counts.
    int question_ = 0;
    std::uint32_t manager_ = 0;
    std::uint32_t selection_ = 0;
};

} // namespace corvane
