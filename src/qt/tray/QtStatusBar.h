#pragma once

#include "platform/StatusBar.h"
#include "qt/tray/TrayWatch.h"

#include <QPointer>

namespace corvane {

class QtStatusItem;

/// The desktop's tray, as StatusNotifierItem or by XEmbed.
class QtStatusBar final : public StatusBar {
public:
    /// One item at a time; it goes before the bar. A length says nothing to a tray.
    std::unique_ptr<StatusItem> statusItem(double length) override;
    bool isShown() const override;

private:
    TrayWatch tray_;
    QPointer<QtStatusItem> item_;
};

} // namespace corvane
