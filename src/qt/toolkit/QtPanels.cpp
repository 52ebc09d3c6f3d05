#include "qt/toolkit/QtPanels.h"

#include "foundation/Text.h"
#include "platform/Platform.h"
#include "qt/items/Strings.h"
#include "qt/models/ApplicationPickerModel.h"
#include "qt/toolkit/MainWindows.h"
#include "qt/toolkit/Views.h"

#include <QDir>
#include <QFileDialog>
#include <QQuickWindow>

namespace corvane {

namespace {

std::optional<Url> urlOf(const std::optional<std::string>& path) {
    return path ? std::optional(Url::fromPath(*path)) : std::nullopt;
}

std::optional<std::string> answerOf(const QFileDialog& dialog) {
    const auto urls = dialog.selectedUrls();
    if (dialog.result() != QDialog::Accepted || urls.isEmpty()) return std::nullopt;
    const auto path = urls.front().toLocalFile();
    return path.isEmpty() ? std::nullopt : std::optional(path.toStdString());
}

QString titleOf(const std::string& title, const std::string& message) {
    return toQString(message.empty() ? title : title + ": " + message);
}

} // namespace

QtPanels::QtPanels(QQmlEngine& engine, const MainWindows& mainWindows, Alerts& alerts,
                   const Machine& machine)
    : engine_(engine), mainWindows_(mainWindows), alerts_(alerts),
      applications_(machine.applications), fileIcons_(machine.fileIcons),
      fileSystem_(machine.fileSystem) {}

QtPanels::~QtPanels() = default;

/// A folder that isn't there would be taken for a name.
QString QtPanels::startOf(const std::string& directory) const {
    for (const auto& folder : {directory, lastFolder_, fileSystem_.documentsDirectory()}) {
        if (!folder.empty() && QFileInfo(toQString(folder)).isDir()) return toQString(folder);
    }
    return QDir::homePath();
}

template <typename Panel>
std::unique_ptr<QFileDialog> QtPanels::makeDialog(const Panel& panel) const {
    // A chooser has no place for a message.
    auto dialog = std::make_unique<QFileDialog>(nullptr, titleOf(panel.title, panel.message),
                                                startOf(panel.directory));
    dialog->setSupportedSchemes({"file"});
    if (panel.content == PanelContent::json) dialog->setNameFilter("JSON files (*.json)");
    return dialog;
}

QObject& QtPanels::show(std::unique_ptr<QFileDialog> made, Qt::WindowModality modality,
                        Answered answered) {
    auto& dialog = *made;
    connect(&dialog, &QDialog::finished, this, [this, &dialog, answered = std::move(answered)] {
        const auto callback = answered;
        const auto answer = answerOf(dialog);
        up_.takeDown(dialog, *this);
        callback(answer);
    });
    up_.add(std::move(made));
    // The main window is no widget, so that it can't be the dialog's parent.
    dialog.winId();
    dialog.windowHandle()->setTransientParent(mainWindows_.front());
    dialog.setWindowModality(modality);
    dialog.show();
    dialog.activateWindow();
    return dialog;
}

QObject& QtPanels::showPicker(const OpenPanel& panel, Qt::WindowModality modality,
                              Answered answered) {
    auto model = std::make_unique<ApplicationPickerModel>(panel, applications_, fileIcons_);
    auto made = makeWindow(engine_, "panels/ApplicationPicker",
                           {{"panel", QVariant::fromValue(model.get())}});
    auto& window = *made;
    connect(model.get(), &ApplicationPickerModel::answered, this,
            [this, &window, answered = std::move(answered)](const auto& path) {
                const auto callback = answered;
                const auto given = path;
                up_.takeDown(window, *this);
                callback(given);
            });
    model.release()->setParent(&window);
    up_.add(std::move(made));
    window.setModality(modality);
    window.setTransientParent(mainWindows_.front());
    window.show();
    window.requestActivate();
    return window;
}

QObject& QtPanels::showOpenPanel(const OpenPanel& panel, Qt::WindowModality modality,
                                 Answered answered) {
    if (panel.content == PanelContent::application) {
        return showPicker(panel, modality, std::move(answered));
    }
    auto dialog = makeDialog(panel);
    const bool wantsFolder = panel.content == PanelContent::folder;
    dialog->setFileMode(wantsFolder ? QFileDialog::Directory : QFileDialog::ExistingFile);
    return show(std::move(dialog), modality, std::move(answered));
}

bool QtPanels::mayReplace(const QString& file) const {
    const QFileInfo found(file);
    if (!found.exists()) return true;
    const auto name = found.fileName().toStdString();
    const auto folder = found.dir().dirName().toStdString();
    const auto answer =
        alerts_.runModal({.title = "“" + name + "” already exists. Do you want to replace it?",
                          .message = "A file with this name is already in “" + folder +
                                     "”. Replacing it overwrites what it holds.",
                          .buttons = {"Replace", "Cancel"},
                          .firstButtonIsDestructive = true});
    return answer.button == AlertResponse::firstButton;
}

std::optional<Url> QtPanels::runSavePanel(const SavePanel& panel) {
    auto asked = panel;
    for (;;) {
        auto chosen = up_.untilAnswered<Answer>(
            [&](auto answered) -> QObject& {
                auto dialog = makeDialog(asked);
                dialog->setAcceptMode(QFileDialog::AcceptSave);
                dialog->selectFile(toQString(asked.proposedName));
                return show(std::move(dialog), Qt::ApplicationModal, std::move(answered));
            },
            *this);
        if (!chosen) return std::nullopt;
        if (panel.directory.empty()) lastFolder_ = path::parent(*chosen);
        // A chooser asks about the name that was typed, so what is put behind it is asked about
        // here.
        const bool isWhole = panel.content != PanelContent::json ||
                             text::equalsIgnoringCase(path::extension(*chosen), "json");
        if (isWhole) return urlOf(chosen);
        *chosen += ".json";
        if (mayReplace(toQString(*chosen))) return urlOf(chosen);
        asked.proposedName = path::lastComponent(*chosen);
    }
}

std::optional<Url> QtPanels::runOpenPanel(const OpenPanel& panel) {
    const auto chosen = up_.untilAnswered<Answer>(
        [&](auto answered) -> QObject& {
            return showOpenPanel(panel, Qt::ApplicationModal, std::move(answered));
        },
        *this);
    if (chosen && panel.directory.empty()) lastFolder_ = path::parent(*chosen);
    return urlOf(chosen);
}

void QtPanels::beginOpenPanel(const OpenPanel& panel,
                              std::function<void(std::optional<Url>)> completion) {
    showOpenPanel(panel, Qt::NonModal, [completion = std::move(completion)](const Answer& path) {
        completion(urlOf(path));
    });
}

} // namespace corvane
