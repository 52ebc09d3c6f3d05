#include "qt/toolkit/QtAlerts.h"

#include "qt/models/AlertModel.h"
#include "qt/toolkit/MainWindows.h"
#include "qt/toolkit/Places.h"
#include "qt/toolkit/Views.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QQuickWindow>
#include <algorithm>

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
                takeDown(*window);
                callback({button, checkboxIsOn});
            });
    model.release()->setParent(window);
    up_.push_back(std::move(made));
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
    window->show();
    mainWindows_.giveKeyboard(*window);
    return *window;
}

/// Only hides it for now: this runs inside a press on one of its buttons.
void QtAlerts::takeDown(const QQuickWindow& window) {
    const auto found = std::find_if(up_.begin(), up_.end(),
                                    [&](const auto& shown) { return shown.get() == &window; });
    if (found == up_.end()) return;
    auto* gone = found->release();
    up_.erase(found);
    for (auto* model : gone->findChildren<AlertModel*>(Qt::FindDirectChildrenOnly))
        model->disconnect(this);
    gone->hide();
    gone->deleteLater();
}

AlertResponse QtAlerts::runModal(const Alert& alert) {
    AlertResponse response;
    QEventLoop loop;
    const auto& window = show(alert, Qt::ApplicationModal, [&](AlertResponse given) {
        response = given;
        loop.quit();
    });
    loop.exec();
    // The loop ends with the program, too.
    takeDown(window);
    return response;
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
