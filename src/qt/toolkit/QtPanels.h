#pragma once

#include "platform/Panels.h"
#include "qt/toolkit/ModalWindows.h"

#include <QObject>
#include <QString>
#include <memory>

class QFileDialog;
class QQmlEngine;

namespace corvane {

class Alerts;
class Applications;
class FileIcons;
class FileSystem;
class MainWindows;
struct Machine;

/// File panels: the desktop's own chooser of files where the toolkit knows of one, else the
/// toolkit's; applications are picked in a window of the program. All stand over its main window
/// where there is one.
class QtPanels final : public QObject, public Panels {
public:
    /// The alerts ask whether a file may be replaced, and of the machine's applications one is
    /// picked. What is given here outlives the panels.
    QtPanels(QQmlEngine& engine, const MainWindows& mainWindows, Alerts& alerts,
             const Machine& machine);
    ~QtPanels() override;

    std::optional<Url> runSavePanel(const SavePanel& panel) override;
    std::optional<Url> runOpenPanel(const OpenPanel& panel) override;
    void beginOpenPanel(const OpenPanel& panel,
                        std::function<void(std::optional<Url>)> completion) override;

private:
    using Answer = std::optional<std::string>;
    using Answered = std::function<void(const Answer&)>;

    QString startOf(const std::string& directory) const;
    template <typename Panel>
    std::unique_ptr<QFileDialog> makeDialog(const Panel& panel) const;
    // Each gives what it shows; `answered` is called once, when that has gone.
    QObject& show(std::unique_ptr<QFileDialog> dialog, Qt::WindowModality modality,
                  Answered answered);
    QObject& showPicker(const OpenPanel& panel, Qt::WindowModality modality, Answered answered);
    QObject& showOpenPanel(const OpenPanel& panel, Qt::WindowModality modality, Answered answered);
    bool mayReplace(const QString& file) const;

    QQmlEngine& engine_;
    const MainWindows& mainWindows_;
    Alerts& alerts_;
    const Applications& applications_;
    const FileIcons& fileIcons_;
    const FileSystem& fileSystem_;
    ModalWindows up_;
    /// Where the last panel without a directory of its own ended.
    std::string lastFolder_;
};

} // namespace corvane
