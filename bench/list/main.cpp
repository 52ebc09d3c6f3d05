#include "Benchmarks.h"
#include "core/BookmarkManager.h"
#include "core/RecordCoding.h"
#include "core/StoreState.h"
#include "qt/models/HeaderModel.h"
#include "qt/models/SettingsModel.h"
#include "qt/models/UndoModel.h"
#include "qt/models/WorkspaceListModel.h"
#include "qt/toolkit/Startup.h"
#include "qt/toolkit/Views.h"
#include "simulated/SimulatedDesktop.h"
#include "ui/ContentState.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSortFilterProxyModel>
#include <QStringListModel>
#include <QVariantAnimation>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>

#include <unistd.h>

/// Measures the main window with 1,000 workspaces beside a bare list of as many lines of text, both
/// drawn by the processor: from a key in the search field to the new list painted, and what a frame
/// takes while the list scrolls; then a key where cards are expanded beside one where none is, and
/// a card of 1,000 resources beside a bare list. Fails where Corvane takes more than is allowed.
namespace corvane::bench {
namespace {

constexpr std::size_t workspaceCount = 1000;
constexpr std::size_t resourcesEach = 20;
constexpr std::size_t expandedCount = 10;
constexpr std::size_t resourcesOfExpanded = 50;
constexpr std::size_t manyResources = 1000;
/// What is typed, so that all cards that are expanded fit it.
constexpr auto searched = "73";
constexpr double frame = 1000.0 / 60;

constexpr auto bareView = R"(
import QtQuick
Window {
    required property var names
    width: 1000; height: 700
    TextInput { width: 240; height: 71; onTextEdited: names.setFilterFixedString(text) }
    ListView {
        y: 71; width: 1000; height: 629
        clip: true; spacing: 24; model: names
        delegate: Rectangle {
            required property string display
            width: 1000; height: 125; border.width: 1
            Text { anchors.centerIn: parent; text: display }
        }
    }
}
)";

constexpr auto bareRows = R"(
import QtQuick
Window {
    required property var names
    width: 1000; height: 700
    ListView {
        x: 32; y: 270; width: 936; height: 420
        clip: true; model: names
        delegate: Rectangle {
            required property string display
            width: 936; height: 77; border.width: 1
            Text { anchors.centerIn: parent; text: display }
        }
    }
}
)";

QQuickItem* findItem(QQuickItem* root, const char* type) {
    if (root->inherits(type)) return root;
    for (auto* child : root->childItems()) {
        if (auto* found = findItem(child, type)) return found;
    }
    return nullptr;
}

double cpuMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double percentile(std::vector<double> times, double part) {
    std::ranges::sort(times);
    return times[std::size_t(double(times.size() - 1) * part)];
}

/// A window with a list, and perhaps a search field.
class Measured {
public:
    Measured(QQuickWindow& window, const QStringList& names)
        : Measured(window, names, findItem(window.contentItem(), "QQuickListView")) {}
    Measured(QQuickWindow& window, const QStringList& names, QQuickItem* list)
        : window_(window), names_(names), list_(list),
          field_(findItem(window.contentItem(), "QQuickTextInput")) {
        QObject::connect(&window, &QQuickWindow::frameSwapped, [this] { ++frames_; });
        window.show();
        waitFor([&] { return frames_ > 0; });
    }

    /// Adds the milliseconds from each key of a search to the list that fits it.
    void type(std::vector<double>& times) {
        focus();
        for (const int key : {Qt::Key_7, Qt::Key_3, Qt::Key_Backspace, Qt::Key_Backspace})
            times.push_back(timeOfKey(key));
    }

    /// Adds the milliseconds between the frames of a scroll over some 60 cards, and how long the
    /// processor worked for each.
    void scroll(std::vector<double>& intervals, std::vector<double>& work) {
        constexpr int distance = 9000;
        constexpr int duration = 1500;
        const double from = list_->property("contentY").toDouble();
        QElapsedTimer clock;
        clock.start();
        QVariantAnimation animation;
        animation.setStartValue(from);
        animation.setEndValue(from + distance);
        animation.setDuration(duration);
        QObject::connect(&animation, &QVariantAnimation::valueChanged,
                         [&](const QVariant& value) { list_->setProperty("contentY", value); });
        animation.start();
        double lastFrame = 0;
        double lastWork = cpuMilliseconds();
        for (int seen = frames_; animation.state() == QAbstractAnimation::Running;) {
            waitFor(
                [&] { return frames_ > seen || animation.state() == QAbstractAnimation::Stopped; });
            seen = frames_;
            const double now = double(clock.nsecsElapsed()) / 1e6;
            const double worked = cpuMilliseconds();
            if (lastFrame > 0) {
                intervals.push_back(now - lastFrame);
                work.push_back(worked - lastWork);
            }
            lastFrame = now;
            lastWork = worked;
        }
    }

private:
    static void waitFor(const std::function<bool()>& condition) {
        while (!condition())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    void focus() {
        window_.requestActivate();
        waitFor([&] { return window_.isActive(); });
        field_->forceActiveFocus();
    }

    double timeOfKey(int key) {
        if (key == Qt::Key_Backspace) {
            text_.chop(1);
        } else {
            text_ += QChar(key);
        }
        const auto expected = names_.filter(text_).size();
        int seen = frames_;
        QElapsedTimer timer;
        timer.start();
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QChar(key));
        QCoreApplication::sendEvent(&window_, &press);
        waitFor([&] {
            if (frames_ == seen) return false;
            seen = frames_;
            return list_->property("count").toInt() == expected;
        });
        return double(timer.nsecsElapsed()) / 1e6;
    }

    QQuickWindow& window_;
    const QStringList names_;
    QQuickItem* list_;
    QQuickItem* field_;
    QString text_;
    int frames_ = 0;
};

/// The real main window on a desktop in memory.
struct RealWindow {
    explicit RealWindow(QQmlEngine& engine, const std::vector<Workspace>& workspaces) {
        StoreState::set(store.workspaces, workspaces);
        view = makeWindow(engine, "window/MainWindow",
                          {{"header", QVariant::fromValue(&header)},
                           {"workspaces", QVariant::fromValue(&list)},
                           {"settings", QVariant::fromValue(&settings)},
                           {"undo", QVariant::fromValue(&undo)}});
    }

    SimulatedDesktop desktop;
    Platform platform = desktop.platform();
    BookmarkManager bookmarks{platform.fileSystem, platform.bookmarks, platform.clock,
                              platform.mainQueue, platform.diskQueue};
    WorkspaceStore store{platform, bookmarks};
    ContentState content{store, platform};
    HeaderModel header{content.header, {}};
    WorkspaceListModel list{
        content.list, store, {}, [this](const Uuid& workspace) { return resourcesOf(workspace); }};
    SettingsModel settings{content.settings, store};
    UndoModel undo{content.undo};
    std::unique_ptr<QQuickWindow> view;

    void expand(const Workspace& workspace) {
        list.toggleExpanded(QString::fromStdString(RecordKey{workspace.id}.toString()));
        QCoreApplication::processEvents();
    }

private:
    std::unique_ptr<ResourceListModel> resourcesOf(const Uuid& workspace) {
        const ResourceManagement::Desktop used{.mainQueue = platform.mainQueue,
                                               .alerts = platform.alerts,
                                               .panels = platform.panels,
                                               .fileSystem = platform.fileSystem,
                                               .bundles = platform.bundles,
                                               .applications = platform.applications,
                                               .fileIcons = platform.fileIcons};
        return std::make_unique<ResourceListModel>(
            std::make_unique<ResourceManagement>(workspace, store, used, content.undo,
                                                 content.missing),
            ResourceListModel::MakeSheet());
    }
};

/// The one inside of an expanded card.
QQuickItem* innerList(QQuickItem* cards) {
    return findItem(cards->property("contentItem").value<QQuickItem*>(), "QQuickListView");
}

bool printRow(const char* what, double ours, double bare, double allowed) {
    std::printf("%-53s %9.2f ms %9.2f ms %9.2f ms\n", what, ours, bare, allowed);
    return ours <= allowed;
}

std::unique_ptr<QQuickWindow> bareWindow(QQmlEngine& engine, const char* view,
                                         QAbstractItemModel& names) {
    QQmlComponent component(&engine);
    component.setData(view, {});
    std::unique_ptr<QObject> made(component.createWithInitialProperties(
        {{"names", QVariant::fromValue<QAbstractItemModel*>(&names)}}));
    auto* window = qobject_cast<QQuickWindow*>(made.release());
    if (!window) qFatal("%s", qPrintable(component.errorString()));
    return std::unique_ptr<QQuickWindow>(window);
}

QStringList namesOf(const auto& records) {
    QStringList names;
    for (const auto& record : records)
        names.append(QString::fromStdString(record.name));
    return names;
}

bool compareKeys(QQmlEngine& engine, std::vector<Workspace> workspaces) {
    const auto names = namesOf(workspaces);
    std::vector<const Workspace*> expanded;
    for (auto& workspace : workspaces) {
        if (workspace.name.find(searched) == std::string::npos) continue;
        workspace.resources = sampleWorkspaces(1, resourcesOfExpanded).front().resources;
        expanded.push_back(&workspace);
        if (expanded.size() == expandedCount) break;
    }
    RealWindow collapsed(engine, workspaces);
    RealWindow open(engine, workspaces);
    for (const auto* workspace : expanded)
        open.expand(*workspace);
    Measured without(*collapsed.view, names);
    Measured with(*open.view, names);
    std::vector<double> times, reference;
    for (int round = 0; round < 10; ++round) {
        without.type(reference);
        with.type(times);
    }
    // Half of the keys meet no expanded card.
    return printRow("a key with ten expanded cards of 50, beside none, 75%",
                    percentile(times, 0.75), percentile(reference, 0.75),
                    percentile(reference, 0.75) + 2 * frame);
}

bool compareRows(QQmlEngine& engine) {
    const auto workspaces = sampleWorkspaces(1, manyResources);
    const auto names = namesOf(workspaces.front().resources);
    QStringListModel all(names);
    const auto window = bareWindow(engine, bareRows, all);
    RealWindow real(engine, workspaces);
    Measured bare(*window, names);
    real.expand(workspaces.front());
    real.view->show();
    auto* cards = findItem(real.view->contentItem(), "QQuickListView");
    while (!innerList(cards))
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    Measured ours(*real.view, names, innerList(cards));
    std::vector<double> bareFrames, bareWork, ourFrames, ourWork;
    for (int round = 0; round < 6; ++round) {
        bare.scroll(bareFrames, bareWork);
        ours.scroll(ourFrames, ourWork);
    }
    const double reference = percentile(bareFrames, 0.95);
    const bool met = printRow("from frame to frame through 1,000 resources, 95%",
                              percentile(ourFrames, 0.95), reference, 1.5 * reference);
    std::printf("%-53s %9.2f ms %9.2f ms\n", "the processor's work for such a frame, 95%",
                percentile(ourWork, 0.95), percentile(bareWork, 0.95));
    return met;
}

double residentMebibytes() {
    std::ifstream statm("/proc/self/statm");
    double all = 0, resident = 0;
    statm >> all >> resident;
    return resident * double(::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// Writes the milliseconds in which a card of that many resources is expanded and painted, and the
/// memory that it takes in MiB.
void open(QQmlEngine& engine, std::size_t count) {
    const auto workspaces = sampleWorkspaces(1, count);
    RealWindow real(engine, workspaces);
    int frames = 0;
    QObject::connect(real.view.get(), &QQuickWindow::frameSwapped, [&] { ++frames; });
    real.view->show();
    const auto waitFor = [](auto&& condition) {
        while (!condition())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    };
    waitFor([&] { return frames > 0; });
    auto* cards = findItem(real.view->contentItem(), "QQuickListView");
    const double before = residentMebibytes();
    QElapsedTimer clock;
    clock.start();
    real.expand(workspaces.front());
    waitFor([&] { return innerList(cards) != nullptr; });
    waitFor([&, seen = frames] { return frames > seen; });
    std::printf("%.1f %.1f\n", double(clock.nsecsElapsed()) / 1e6, residentMebibytes() - before);
}

bool compare(QQmlEngine& engine, const std::vector<Workspace>& workspaces) {
    const auto names = namesOf(workspaces);
    QStringListModel all(names);
    QSortFilterProxyModel filtered;
    filtered.setSourceModel(&all);
    const auto window = bareWindow(engine, bareView, filtered);
    RealWindow real(engine, workspaces);
    Measured bare(*window, names);
    Measured ours(*real.view, names);
    std::vector<double> bareKeys, bareFrames, bareWork, ourKeys, ourFrames, ourWork;
    // In turn, so that a busy moment of the machine doesn't fall on one side only.
    for (int round = 0; round < 10; ++round) {
        bare.type(bareKeys);
        ours.type(ourKeys);
        bare.scroll(bareFrames, bareWork);
        ours.scroll(ourFrames, ourWork);
    }

    std::printf("%-53s %12s %12s %12s\n", "what", "ours", "bare list", "allowed");
    bool met = printRow("a key to the new list, median", percentile(ourKeys, 0.5),
                        percentile(bareKeys, 0.5), percentile(bareKeys, 0.5) + 2 * frame);
    met &= printRow("a key to the new list, the longest", percentile(ourKeys, 1),
                    percentile(bareKeys, 1), percentile(bareKeys, 1) + 2 * frame);
    met &= printRow("from frame to frame of a scroll, 95%", percentile(ourFrames, 0.95),
                    percentile(bareFrames, 0.95), 1.5 * percentile(bareFrames, 0.95));
    met &= printRow("the processor's work for such a frame, 95%", percentile(ourWork, 0.95),
                    percentile(bareWork, 0.95), 2 * percentile(bareWork, 0.95));
    return met;
}

} // namespace
} // namespace corvane::bench

/// The argument is a file that becomes a workspaces file with what was measured; "--rows" and a
/// number measure a card of that many resources instead.
int main(int argc, char** argv) {
    using namespace corvane;
    qputenv("QT_QUICK_BACKEND", "software");
    prepareApplication();
    QApplication application(argc, argv);
    nameApplication(application);
    QQmlEngine engine;
    addViews(engine);
    if (argc > 2 && argv[1] == std::string_view("--rows")) {
        bench::open(engine, std::strtoul(argv[2], nullptr, 10));
        return 0;
    }
    const auto workspaces = bench::sampleWorkspaces(bench::workspaceCount, bench::resourcesEach);
    if (argc > 1) std::ofstream(argv[1]) << encodeWorkspaces(workspaces);
    bool met = bench::compare(engine, workspaces);
    met &= bench::compareKeys(engine, workspaces);
    met &= bench::compareRows(engine);
    return met ? 0 : 1;
}
