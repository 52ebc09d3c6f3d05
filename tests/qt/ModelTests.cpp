#include "core/StoreScene.h"
#include "qt/items/Symbols.h"
#include "qt/models/AlertModel.h"
#include "qt/models/WorkspaceListModel.h"
#include "qt/toolkit/QtAppearance.h"
#include "qt/toolkit/QtMainQueue.h"
#include "qt/tray/Popup.h"
#include "qt/tray/TrayMenu.h"
#include "ui/ContentState.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QIcon>
#include <QImageReader>
#include <QMenu>
#include <QScreen>
#include <QTemporaryFile>
#include <QTest>
#include <thread>

namespace corvane {
namespace {

TEST(QtMainQueueTest, runsInOrderOneAtATimeAndFromAnyThread) {
    QtMainQueue queue;
    std::string log;
    queue.after(0.2, [&] { log += "later "; });
    queue.async([&] {
        log += "outer( ";
        queue.async([&] { log += "inner "; });
        QTest::qWait(400);
        log += ") ";
    });
    std::thread([&] { queue.async([&] { log += "other "; }); }).join();
    (void)QTest::qWaitFor([&] { return log.ends_with("later "); });
    EXPECT_EQ(log, "outer( ) other inner later ");
}

TEST(AlertModelTest, cutsTheMiddleOfWhatWouldTakeLongToDraw) {
    const std::string path(1'000'000, 'x');
    const AlertModel one({.title = path, .message = "Failed.\n\nPath: " + path + "<b>"});
    EXPECT_EQ(one.title().size(), 1000);
    EXPECT_EQ(one.message().size(), 9 + 1000);
    EXPECT_TRUE(one.message().startsWith("Failed.\n\nPath: xxx"));
    EXPECT_TRUE(one.message().endsWith("xxx<b>"));
    const AlertModel many({.message = text::replacingAll(path, "x", "y\n") + "end"});
    EXPECT_EQ(many.message().count('\n'), 299);
    EXPECT_TRUE(many.message().contains("y\n…\ny") && many.message().endsWith("y\nend"));
}

TEST(QtMainQueueTest, isDoneWithAllThatIsScheduledAndThatComesOfIt) {
    QtMainQueue queue;
    std::string log;
    queue.after(0.3, [&] {
        log += "first ";
        std::thread([&] { queue.after(0.5, [&] { log += "second "; }); }).join();
    });
    queue.whenDone(10, [&] { log += "replaced "; });
    queue.whenDone(10, [&] { log += "done "; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return log == "first second done "; }, 4000)) << log;

    log.clear();
    queue.after(60, [&] { log += "much later "; });
    queue.async([&] {
        log += "alert( ";
        QTest::qWait(500);
        log += ") ";
    });
    queue.whenDone(60, [&] { log += "replaced "; });
    queue.whenDone(0.2, [&] { log += "done "; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return log == "alert( ) done "; }, 4000)) << log;
}

std::string labelsOf(TrayMenu& menu, std::vector<int>& ids) {
    constexpr int root = 0, all = -1;
    bus::MenuNode layout;
    menu.GetLayout(root, all, {}, layout);
    std::string labels;
    ids.clear();
    for (const auto& child : layout.children) {
        const auto node = child.variant().value<bus::MenuNode>();
        ids.push_back(node.id);
        const auto& shown = node.properties;
        const auto state = shown.value("toggle-state", -1).toInt();
        labels += (shown.value("enabled", true).toBool() ? "" : "-") +
                  shown.value("label", shown.value("type")).toString().toStdString() +
                  (state < 0 ? "" : std::to_string(state)) + "|";
    }
    return labels;
}

/// A host reads underscores as marks of letters, the toolkit ampersands, and both tabs.
TEST(TrayMenuTest, readsTheSameWhoeverShowsItAndNoPressMeansAnotherItem) {
    std::string log;
    const auto item = [&](const std::string& title) {
        return MenuItem{.title = title, .action = [&log, title] { log += title + " "; }};
    };
    auto pictured = item("my__project R&D _Co\tTab");
    pictured.image = Image{.source = Image::Source::symbol, .name = "star", .size = 16};
    const Menu first{{.title = "Title", .isEnabled = false},
                     MenuItem::separator(),
                     pictured,
                     {.title = "Switch", .action = [] {}, .state = true}};
    TrayMenu menu;
    int updates = 0;
    QObject::connect(&menu, &TrayMenu::LayoutUpdated, [&] { ++updates; });
    menu.show(first);
    std::vector<int> ids, later;
    EXPECT_EQ(labelsOf(menu, ids), "-Title|separator|my____project R&D __Co Tab|Switch1|");
    const auto popup = makePopup(first);
    EXPECT_EQ(popup->actions()[2]->text().toStdString(), "my__project R&&D _Co Tab");
    EXPECT_FALSE(popup->actions()[2]->icon().isNull());
    const auto sent = menu.GetProperty(ids[2], "icon-data").variant().toByteArray();
    EXPECT_FALSE(QImage::fromData(sent, "PNG").isNull());

    menu.show(first);
    EXPECT_EQ(updates, 1) << "it looks the same";
    menu.show({first[0], first[1], item("New"), item("Other"), first[3]});
    EXPECT_EQ(updates, 2);
    EXPECT_EQ(labelsOf(menu, later), "-Title|separator|New|Other|Switch1|");
    EXPECT_EQ(std::vector({later[0], later[1], later[4]}), std::vector({ids[0], ids[1], ids[3]}));
    menu.Event(ids[2], "clicked", {}, 0);
    menu.Event(later[2], "hovered", {}, 0);
    menu.Event(later[0], "clicked", {}, 0);
    EXPECT_EQ(menu.EventGroup({{later[3], "clicked", {}, 0}, {999, "clicked", {}, 0}}),
              QList<int>{999});
    EXPECT_EQ(log, "") << "the host hears first";
    QCoreApplication::processEvents();
    EXPECT_EQ(log, "Other ");
    EXPECT_EQ(menu.GetProperty(later[2], "label").variant(), "New");
    EXPECT_EQ(menu.GetGroupProperties({later[3]}, {})[0].properties["label"], "Other");
}

TEST(QtAppearanceTest, followsTheScreens) {
    QtAppearance appearance;
    int changes = 0;
    const auto following = appearance.screenParametersDidChange().subscribe([&] { ++changes; });
    auto* const screen = QGuiApplication::primaryScreen();
    emit screen->geometryChanged(screen->geometry());
    emit screen->logicalDotsPerInchChanged(96);
    emit qGuiApp->screenRemoved(screen);
    emit qGuiApp->primaryScreenChanged(screen);
    EXPECT_EQ(changes, 4);
    emit qGuiApp->screenAdded(screen);
    EXPECT_EQ(changes, 5);
}

TEST(IconsTest, themesDrawTheirsInVectors) {
    const auto kinds = QImageReader::supportedImageFormats();
    EXPECT_TRUE(kinds.contains("svg") && kinds.contains("svgz"));
    QTemporaryFile icon(QDir::tempPath() + "/XXXXXX.svg");
    ASSERT_TRUE(icon.open());
    icon.write("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'>"
               "<rect width='8' height='8' fill='#ff0000'/></svg>");
    icon.close();
    EXPECT_EQ(QIcon(icon.fileName()).pixmap(128).toImage().pixelColor(64, 64), QColor(Qt::red));
}

TEST(SymbolsTest, aNameThatIsNotThereIsDrawnAsANeutralOne) {
    const Symbols symbols;
    const auto neutral = symbols.glyph("no.such.symbol");
    EXPECT_EQ(neutral.size(), 1);
    EXPECT_EQ(symbols.glyph(""), neutral);
    EXPECT_EQ(symbols.glyph("zzz"), neutral);
    EXPECT_NE(symbols.glyph("app.badge"), neutral);
}

TEST(WorkspaceListModelTest, rowsKeepTheirIdentityWhenTheListChanges) {
    StoreScene scene;
    const auto a = scene.workspace("a"), b = scene.workspace("b"), c = scene.workspace("c"),
               d = scene.workspace("d");
    auto& store = scene.start({a, b, c});
    ContentState content(store, scene.platform);
    WorkspaceListModel model(content.list, store, {}, {});
    const QAbstractItemModelTester tester(&model);
    const QPersistentModelIndex rowOfC(model.index(2));
    const std::tuple<std::vector<Workspace>, const char*, int> steps[]{
        {{c, a, b}, "cab", 0}, {{a, d, b, c}, "adbc", 3},
        {{d, c}, "dc", 1},     {{d, d, c, a, c}, "ddcac", 2},
        {{c}, "c", 0},         {{a, b}, "ab", -1},
        {{}, "", -1}};
    for (const auto& [list, names, row] : steps) {
        StoreState::set(store.workspaces, list);
        QTest::qWait(0);
        QString shown;
        for (int i = 0; i < model.rowCount(); ++i)
            shown += model.data(model.index(i), WorkspaceListModel::NameRole).toString();
        EXPECT_EQ(shown.toStdString(), names);
        EXPECT_EQ(rowOfC.row(), row) << names;
    }
}

} // namespace
} // namespace corvane
