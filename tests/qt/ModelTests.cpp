#include "core/StoreScene.h"
#include "qt/items/Symbols.h"
#include "qt/models/AlertModel.h"
#include "qt/models/WorkspaceListModel.h"
#include "qt/toolkit/QtMainQueue.h"
#include "ui/WorkspaceListState.h"

#include <QAbstractItemModelTester>
#include <QEventLoop>
#include <QTest>
#include <QTimer>
#include <thread>

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(QtMainQueueTest, runsInOrderOneAtATimeAndFromAnyThread) {
    QtMainQueue queue;
    std::string log;
    queue.after(0.02, [&] { log += "later "; });
    queue.async([&] {
        log += "outer( ";
        queue.async([&] { log += "inner "; });
        QEventLoop nested;
        QTimer::singleShot(40, &nested, &QEventLoop::quit);
        nested.exec();
        log += ") ";
    });
    std::thread([&] { queue.async([&] { log += "other "; }); }).join();
    QTest::qWait(100);
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
    EXPECT_TRUE(many.message().contains("y\n…\ny"));
    EXPECT_TRUE(many.message().endsWith("y\nend"));
}

TEST(SymbolsTest, everyNameHasAGlyphOfItsOwnKind) {
    const Symbols symbols;
    const auto neutral = symbols.glyph("no.such.symbol");
    EXPECT_EQ(neutral.size(), 1);
    EXPECT_EQ(symbols.glyph(""), neutral);
    EXPECT_EQ(symbols.glyph("zzz"), neutral);
    for (const auto type : allResourceTypes) {
        const auto name = symbolName(type);
        EXPECT_NE(symbols.glyph(QString::fromUtf8(name.data(), int(name.size()))), neutral) << name;
    }
    for (const auto* name : {"app.badge", "laptopcomputer", "sparkles", "xmark.circle", "code"}) {
        EXPECT_NE(symbols.glyph(name), neutral) << name;
    }
}

/// What the views of a list do with rows depends on who stays who.
TEST(WorkspaceListModelTest, rowsKeepTheirIdentityWhenTheListChanges) {
    StoreScene scene;
    const auto a = scene.workspace("a"), b = scene.workspace("b"), c = scene.workspace("c"),
               d = scene.workspace("d");
    scene.writeFile({a, b, c});
    auto& store = scene.start();
    WorkspaceListState state(store, scene.platform.mainQueue, scene.platform.alerts);
    WorkspaceListModel model(state, {}, {});
    const QAbstractItemModelTester tester(&model);
    const QPersistentModelIndex rowOfC(model.index(2));
    const struct {
        std::vector<Workspace> list;
        const char* names;
        int rowOfC;
    } steps[]{
        {{c, a, b}, "cab", 0}, {{a, d, b, c}, "adbc", 3},
        {{d, c}, "dc", 1},     {{d, d, c, a, c}, "ddcac", 2},
        {{c}, "c", 0},         {{a, b}, "ab", -1},
        {{}, "", -1},
    };
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
