#pragma once

#include "platform/Panels.h"

#include <QObject>
#include <memory>
#include <vector>

class QQmlEngine;
class QQuickWindow;

namespace corvane {

class FilePanel;
class MainWindows;
struct Platform;

/// File panels as windows of the program, over its main window where there is one.
class QtPanels final : public QObject, public Panels {
public:
    /// Both outlive the panels.
    QtPanels(QQmlEngine& engine, const MainWindows& mainWindows);
    ~QtPanels() override;

    /// Whose files the panels show. Comes before the first panel; outlives them all.
    void serve(const Platform& platform) { platform_ = &platform; }

    std::optional<Url> runSavePanel(const SavePanel& panel) override;
    std::optional<Url> runOpenPanel(const OpenPanel& panel) override;
    void beginOpenPanel(const OpenPanel& panel,
                        std::function<void(std::optional<Url>)> completion) override;

private:
    using Answered = std::function<void(const std::optional<std::string>&)>;

    template <typename Panel>
    std::unique_ptr<FilePanel> makePanel(Panel panel) const;
    std::optional<Url> runModal(std::unique_ptr<FilePanel> panel, bool remembersFolder);
    /// `answered` is called once, when the window has gone.
    QQuickWindow& show(std::unique_ptr<FilePanel> panel, Qt::WindowModality modality,
                       Answered answered);
    void takeDown(const QQuickWindow& window);

    QQmlEngine& engine_;
    const MainWindows& mainWindows_;
    const Platform* platform_ = nullptr;
    std::vector<std::unique_ptr<QQuickWindow>> up_;
    /// Where the last panel without a directory of its own ended.
    std::string lastFolder_;
};

} // namespace corvane
