#include "qt/Interface.h"
#include "qt/toolkit/QtAppearance.h"
#include "qt/toolkit/QtPanels.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace corvane {
namespace {

struct PanelViews : testing::Test, Interface {
    QtPanels panels{engine, windows, platform.alerts, platform};
    std::string outcome;
    QTemporaryDir folder;

    PanelViews() {
        for (const std::string name : {"Quill", "atlas", "Ärger"})
            desktop.install({.path = "/Applications/" + name + ".app"});
        open({});
        for (const auto* name : {"Out.json", "notes.txt"})
            QFile(folder.filePath(name)).open(QIODevice::WriteOnly);
        QDir(folder.path()).mkdir("Old");
    }
    void begin() {
        outcome = "still up";
        panels.beginOpenPanel(
            {.title = "Pick", .message = "Take one", .content = PanelContent::application},
            [this](const auto& url) { outcome = url ? url->path() : "cancelled"; });
        runFor(0);
        EXPECT_TRUE(shows("Take one"));
    }
    std::string in(const std::string& name) { return folder.path().toStdString() + "/" + name; }

    /// What a person does about each dialog that comes up, in turn: a name typed and Return, or the
    /// text of a button. Notes what each shows.
    void answer(std::vector<std::string> answers) {
        QTimer::singleShot(0, [this, answers = std::move(answers)]() mutable {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!box && !dialog) return answer(std::move(answers));
            const auto next = answers.front();
            answers.erase(answers.begin());
            // What comes up next is up inside of this.
            if (!answers.empty()) answer(std::move(answers));
            if (dialog) return fill(*dialog, next);
            seen += "asks|";
            box->button(next == "Yes" ? QMessageBox::Yes : QMessageBox::No)->click();
        });
    }
    void fill(QFileDialog& dialog, const std::string& text) {
        seen += dialog.windowTitle().toStdString() + "|";
        if (text == "Escape") return QTest::keyClick(&dialog, Qt::Key_Escape);
        auto* name = dialog.findChild<QLineEdit*>();
        seen += name->text().toStdString() + "|";
        name->setText(QString::fromStdString(text));
        QTest::keyClick(name, Qt::Key_Return);
    }
    std::string seen;
};

TEST_F(PanelViews, theChooserIsAsDarkAsTheProgram) {
    bool prefersDark = false;
    QtAppearance appearance([&] { return prefersDark; });
    for (const bool dark : {true, false}) {
        prefersDark = dark;
        dark ? appearance.readAgain() : appearance.setAppearance(dark);
        const auto shown = QFileDialog().grab().toImage();
        EXPECT_EQ(shown.pixelColor(2, 2).lightness() < 128, dark);
        EXPECT_EQ(shown.pixelColor(shown.rect().center()).lightness() < 128, dark);
    }
}

TEST_F(PanelViews, theChooserSavesUnderANameThatEndsAsItShould) {
    const auto save = [&](std::vector<std::string> answers) {
        seen.clear();
        answer(std::move(answers));
        const auto url = panels.runSavePanel({.title = "Export",
                                              .message = "Choose where",
                                              .proposedName = "All.json",
                                              .directory = folder.path().toStdString()});
        return seen + (url ? url->path().substr(folder.path().size()) : "cancelled");
    };
    EXPECT_EQ(save({"All.json"}), "Export: Choose where|All.json|/All.json");
    EXPECT_EQ(save({"New"}), "Export: Choose where|All.json|/New.json");
    EXPECT_EQ(save({"New.JSON"}), "Export: Choose where|All.json|/New.JSON");
    EXPECT_EQ(save({"Escape"}), "Export: Choose where|cancelled");
    EXPECT_EQ(save({"Out.json", "Yes"}), "Export: Choose where|All.json|asks|/Out.json");
    EXPECT_EQ(save({"Out.json", "No", "Escape"}),
              "Export: Choose where|All.json|asks|Export: Choose where|cancelled");
    auto& answers = desktop.alertAnswers;
    const std::string question = "“Out.json” already exists. Do you want to replace it?";
    answers[question].button = AlertResponse::secondButton;
    EXPECT_EQ(save({"Out", "Escape"}),
              "Export: Choose where|All.json|Export: Choose where|cancelled");
    answers[question].button = AlertResponse::firstButton;
    EXPECT_EQ(save({"Out"}), "Export: Choose where|All.json|/Out.json");
    EXPECT_EQ(desktop.logged("alert"), "alert " + question + "\nalert " + question);
}

TEST_F(PanelViews, theChooserOpensWhatIsThereAndStartsWhereTheLastOneEnded) {
    const auto open = [&](PanelContent content, std::vector<std::string> answers) {
        seen.clear();
        answer(std::move(answers));
        const auto url = panels.runOpenPanel({.title = "File Path", .content = content});
        return seen + (url ? url->path() : "cancelled");
    };
    EXPECT_EQ(open(PanelContent::json, {in("Out.json")}), "File Path||" + in("Out.json"));
    EXPECT_EQ(open(PanelContent::file, {"notes.txt"}), "File Path||" + in("notes.txt"));
    EXPECT_EQ(open(PanelContent::folder, {"Old"}), "File Path||" + in("Old"));
    EXPECT_EQ(open(PanelContent::file, {"Escape"}), "File Path|cancelled");
}

TEST_F(PanelViews, applicationsArePickedByNameOrByPointer) {
    begin();
    EXPECT_EQ(shown(), "Pick|Pick|Take one|Search applications...|Applications|Ärger|atlas|Quill|"
                       "Cancel|Open");
    EXPECT_FALSE(isEnabled("Open"));
    type("a");
    EXPECT_FALSE(shows("Quill"));
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(outcome, "still up");
    key(Qt::Key_Return);
    EXPECT_EQ(outcome, "/Applications/atlas.app");
    EXPECT_FALSE(shows("Take one"));

    begin();
    ASSERT_TRUE(press("Quill"));
    key(Qt::Key_Up);
    ASSERT_TRUE(press("Open"));
    EXPECT_EQ(outcome, "/Applications/atlas.app");

    begin();
    type("zz");
    EXPECT_TRUE(shows("No application has this name."));
    key(Qt::Key_Return);
    EXPECT_EQ(outcome, "still up");
    key(Qt::Key_Escape);
    EXPECT_EQ(outcome, "cancelled");
}

} // namespace
} // namespace corvane
