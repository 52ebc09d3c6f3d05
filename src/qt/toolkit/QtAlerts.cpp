#include "qt/toolkit/QtAlerts.h"

#include "qt/models/AlertModel.h"
#include "qt/toolkit/MainWindows.h"
#include "qt/toolkit/Places.h"
#include "qt/toolkit/Views.h"
#include "qt/toolkit/WaylandDialogs.h"

#include <QGuiApplication>
#include <QQuickWindow>

namespace corvane {

QtAlerts::QtAlerts(QQmlEngine& engine, const MainWindows& mainWindows)
    : engine_(engine), mainWindows_(mainWindows) {}

QtAlerts::~QtAlerts() = default;

QQuickWindow& QtAlerts::show(const Alert& alert, Qt::WindowModality modality,
                             std::function<void(AlertResponse)> answered) {
    auto model = std::make_unique<AlertModel>(alert);
    auto made =
        makeWindow(engine_, "window/AlertWindow", {{"alert", QVariant::fromValue(model.get())}});
    auto* window = made.get();
    connect(model.get(), &AlertModel::answered, this,
            [this, window, answered = std::move(answered)](int button, bool checkboxIsOn) {
                const auto callback = answered;
                up_.takeDown(*window, *this);
                callback({button, checkboxIsOn});
            });
    model.release()->setParent(window);
    up_.add(std::move(made));
    auto* owner = modality == Qt::ApplicationModal ? QGuiApplication::modalWindow() : nullptr;
    if (!owner) owner = mainWindows_.front();
    if (owner && !mainWindows_.isInSight(*owner)) owner = nullptr;
    window->setTransientParent(owner);
    // A dialog of no window would be shown where the program's other windows are.
    if (!owner) window->setFlags(Qt::Window);
    window->setModality(owner ? modality : Qt::ApplicationModal);
    window->setMinimumSize(window->size());
    window->setMaximumSize(window->size());
    center(*window, owner);
    showAsDialog(*window);
    mainWindows_.giveKeyboard(*window);
    return *window;
}

AlertResponse QtAlerts::runModal(const Alert& alert) {
    return up_.untilAnswered<AlertResponse>(
        [&](auto answered) -> QObject& {
            return show(alert, Qt::ApplicationModal, std::move(answered));
        },
        *this);
}

bool QtAlerts::beginSheet(const Alert& alert, std::function<void(AlertResponse)> completion) {
    if (!mainWindows_.front()) return false;
    sheets_.push_back({alert, std::move(completion)});
    if (!sheetIsUp_) showNextSheet();
    return true;
}

void QtAlerts::showNextSheet() {
    if (sheets_.empty()) return;
    sheetIsUp_ = true;
    auto sheet = std::move(sheets_.front());
    sheets_.pop_front();
    show(sheet.alert, Qt::WindowModal, [this, sheet](AlertResponse response) {
        sheetIsUp_ = false;
        sheet.completion(response);
        if (!sheetIsUp_) showNextSheet();
    });
}

} // namespace corvane
