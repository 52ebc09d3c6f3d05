#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <cstdint>

namespace corvane {

/// Whether the desktop has a tray: a host of StatusNotifier items on the session bus, or, on X11,
/// an owner of the display's tray selection. Waits for no answer of the bus.
class TrayWatch : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// With an application object.
    TrayWatch();
    ~TrayWatch() override;

    bool isThere() const { return hasHost_ || hasSelectionOwner(); }
    bool hasHost() const { return hasHost_; }

signals:
    /// One has come, or another one in the place of the last: a host, or a selection owner.
    void hostCame();
    void ownerCame();

private slots:
    void askForHost();
    void welcomeHost();

private:
    bool hasSelectionOwner() const;
    void watchBus();
    void watchDisplay();
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    bool hasHost_ = false;
    /// Counts the questions, as only the answer to the last one counts.
    int question_ = 0;
    std::uint32_t manager_ = 0;
    std::uint32_t selection_ = 0;
};

} // namespace corvane
