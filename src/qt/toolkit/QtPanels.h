#pragma once

#include "platform/Panels.h"

#include <QObject>
#include <QString>
#include <memory>
#include <vector>

class QFileDialog;
class QQmlEngine;

namespace corvane {

class MainWindows;
struct Platform;

/// File panels: the desktop's own chooser of files where the toolkit knows of one, else the
/// toolkit's; applications are picked in a window of the program. All stand over its main window
/// where there is one.
class QtPanels final : public QObject, public Panels {
public:
    /// Both outlive the panels.
    QtPanels(QQmlEngine& engine, const MainWindows& mainWindows);
    ~QtPanels() override;

    /// Whose applications are picked, and who asks. Comes before the first panel; outlives them
    /// all.
    void serve(const Platform& platform) { platform_ = &platform; }

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
    Answer untilAnswered(const std::function<QObject&(Answered)>& show);
    bool mayReplace(const QString& file) const;
    void takeDown(const QObject& shown);

    QQmlEngine& engine_;
    const MainWindows& mainWindows_;
    const Platform* platform_ = nullptr;
    std::vector<std::unique_ptr<QObject>> up_;
    /// Where the last panel without a directory of its own ended.
    std::string lastFolder_;
};

} // namespace corvane
