#include "qt/toolkit/QtPanels.h"

#include "platform/Platform.h"
#include "qt/models/PanelModel.h"
#include "qt/toolkit/MainWindows.h"
#include "qt/toolkit/Views.h"

#include <QEventLoop>
#include <QQuickWindow>
#include <algorithm>

namespace corvane {

namespace {

std::optional<Url> urlOf(const std::optional<std::string>& path) {
    return path ? std::optional(Url::fromPath(*path)) : std::nullopt;
}

} // namespace

QtPanels::QtPanels(QQmlEngine& engine, const MainWindows& mainWindows)
    : engine_(engine), mainWindows_(mainWindows) {}

QtPanels::~QtPanels() = default;

template <typename Panel>
std::unique_ptr<FilePanel> QtPanels::makePanel(Panel panel) const {
    if (panel.directory.empty()) panel.directory = lastFolder_;
    return std::make_unique<FilePanel>(panel, platform_->fileSystem, platform_->alerts);
}

QQuickWindow& QtPanels::show(std::unique_ptr<FilePanel> panel, Qt::WindowModality modality,
                             Answered answered) {
    auto model = std::make_unique<PanelModel>(std::move(panel), platform_->fileIcons);
    auto made =
        makeWindow(engine_, "panels/PanelWindow", {{"panel", QVariant::fromValue(model.get())}});
    auto& window = *made;
    connect(model.get(), &PanelModel::answered, this,
            [this, &window, answered = std::move(answered)](const auto& path) {
                const auto callback = answered;
                const auto given = path;
                takeDown(window);
                callback(given);
            });
    model.release()->setParent(&window);
    up_.push_back(std::move(made));
    window.setModality(modality);
    window.setTransientParent(mainWindows_.front());
    window.show();
    window.requestActivate();
    return window;
}

/// Only hides it for now: this runs inside an event of the window's own.
void QtPanels::takeDown(const QQuickWindow& window) {
    const auto found = std::find_if(up_.begin(), up_.end(),
                                    [&](const auto& shown) { return shown.get() == &window; });
    if (found == up_.end()) return;
    auto* gone = found->release();
    up_.erase(found);
    for (auto* model : gone->findChildren<PanelModel*>(Qt::FindDirectChildrenOnly))
        model->disconnect(this);
    gone->hide();
    gone->deleteLater();
}

std::optional<Url> QtPanels::runModal(std::unique_ptr<FilePanel> panel, bool remembersFolder) {
    std::optional<std::string> chosen;
    QEventLoop loop;
    const auto& window = show(std::move(panel), Qt::ApplicationModal, [&](const auto& path) {
        chosen = path;
        loop.quit();
    });
    loop.exec();
    // The loop ends with the program, too.
    takeDown(window);
    if (chosen && remembersFolder) lastFolder_ = path::parent(*chosen);
    return urlOf(chosen);
}

std::optional<Url> QtPanels::runSavePanel(const SavePanel& panel) {
    return runModal(makePanel(panel), panel.directory.empty());
}

std::optional<Url> QtPanels::runOpenPanel(const OpenPanel& panel) {
    return runModal(makePanel(panel), panel.directory.empty());
}

void QtPanels::beginOpenPanel(const OpenPanel& panel,
                              std::function<void(std::optional<Url>)> completion) {
    show(makePanel(panel), Qt::NonModal,
         [completion = std::move(completion)](const auto& path) { completion(urlOf(path)); });
}

} // namespace corvane
