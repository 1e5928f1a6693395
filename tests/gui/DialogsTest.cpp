// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Preferences, prompts, results windows and the bindings that no tab uses yet.

#include "app/Controls.h"
#include "gui/Bindings.h"
#include "gui/OutputWindowController.h"
#include "gui/PreferencesController.h"
#include "gui/StatusPanelController.h"
#include "gui/WindowFixture.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFontInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QThread>
#include <QToolBar>
#include <QTreeWidget>

namespace kruv::test {

class DialogsTest : public WindowTest
{
protected:
    OutputWindowController *resultsWindow(int number)
    {
        int seen = 0;
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *each : windows) {
            if (auto *found = qobject_cast<OutputWindowController *>(each); found && seen++ == number) {
                return found;
            }
        }
        return nullptr;
    }
};

TEST_F(DialogsTest, PreferencesAreStoredAtOnce)
{
    PreferencesController panes(preferences, nullptr);
    panes.show();
    auto *threads = find<QSpinBox>(&panes, "maxThreads");
    EXPECT_EQ(threads->minimum(), 1);
    EXPECT_EQ(threads->maximum(), std::max(1, QThread::idealThreadCount()));
    int announced = 0;
    QObject::connect(&preferences, &Preferences::kruvMaxThreadsChangedNotification, &panes,
                     [&announced](int number) { announced = number; });
    threads->setValue(1);
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(preferences.integer(QStringLiteral("maxThreads")), 1);

    find<QCheckBox>(&panes, "warnOnDelete")->click();
    EXPECT_FALSE(preferences.boolean(QStringLiteral("warnOnDelete")));
    find<QAbstractButton>(&panes, "trashOrDelete Move to the trash")->click();
    EXPECT_EQ(preferences.integer(QStringLiteral("trashOrDelete")), 1);
    auto *extension = find<QLineEdit>(&panes, "ffpExtension");
    extension->setText(QStringLiteral("ffp"));
    EXPECT_EQ(preferences.string(QStringLiteral("ffpExtension")), QStringLiteral("ffp"));
    find<QComboBox>(&panes, "incomingSurroundOrder")->setCurrentIndex(2);
    EXPECT_EQ(preferences.string(QStringLiteral("incomingSurroundOrder")),
              find<QComboBox>(&panes, "incomingSurroundOrder")->itemText(2));
}

TEST_F(DialogsTest, PreferencesShowOnePaneAtATime)
{
    PreferencesController panes(preferences, nullptr);
    panes.show();
    const QList<QAction *> actions = find<QToolBar>(&panes, "PrefsToolbar")->actions();
    ASSERT_EQ(actions.size(), 3);
    for (QAction *action : actions) {
        action->trigger();
        for (const QAction *each : actions) {
            EXPECT_EQ(panes.findChild<QWidget *>(each->text())->isVisible(), each == action);
        }
    }
    auto *tools = find<QTreeWidget>(&panes, "tools");
    ASSERT_TRUE(waitUntil([tools] { return tools->topLevelItemCount() > 0; }));
    EXPECT_EQ(tools->topLevelItemCount(), static_cast<int>(ToolCatalog::all().size()));
    EXPECT_EQ(tools->topLevelItem(0)->text(0), QStringLiteral("flac"));
    EXPECT_NE(tools->topLevelItem(0)->text(1), QString());
}

TEST_F(DialogsTest, ResultsCanBeFoundCopiedAndSaved)
{
    const QString text = QStringLiteral("first.flac: ok\nsecond.flac: ERROR\n");
    userInterface.openResultsWindow(text, QStringLiteral("Verify FLAC"));
    userInterface.openResultsWindow(QStringLiteral("other"), QStringLiteral("Output"));
    OutputWindowController *results = resultsWindow(0);
    ASSERT_TRUE(results && resultsWindow(1));
    EXPECT_NE(results->pos(), resultsWindow(1)->pos());
    if (results->windowTitle() != u"Verify FLAC") {
        results = resultsWindow(1);
    }
    EXPECT_EQ(results->windowTitle(), QStringLiteral("Verify FLAC"));
    auto *view = find<QPlainTextEdit>(results, "outputText");
    EXPECT_EQ(view->toPlainText(), text);
    EXPECT_EQ(view->font().family(), QStringLiteral("Courier"));
    EXPECT_EQ(view->font().pointSize(), 10);

    results->activateWindow();
    QTest::keyClick(results, Qt::Key_F, Qt::ControlModifier);
    auto *field = find<QLineEdit>(results, "find");
    QTest::keyClicks(field, QStringLiteral("error"));
    EXPECT_EQ(view->textCursor().selectedText(), QStringLiteral("ERROR"));
    QTest::keyClicks(field, QStringLiteral("x"));
    EXPECT_NE(field->palette().color(QPalette::Text), QApplication::palette().color(QPalette::Text));

    QTest::mouseClick(find<QPushButton>(results, "copyAll"), Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), text);
    const QString saved = folder.file(QStringLiteral("saved.txt"));
    answerFileDialog(saved);
    QTest::mouseClick(find<QPushButton>(results, "saveAs"), Qt::LeftButton);
    EXPECT_EQ(readFile(saved), text.toUtf8());
    resultsWindow(0)->close();
    serveEvents();
}

TEST_F(DialogsTest, PromptsReturnWhatWasEnteredOrNothing)
{
    withNextDialog([](QWidget *dialog) {
        auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("enteredText"));
        EXPECT_EQ(field->text(), QStringLiteral("before"));
        field->setText(QStringLiteral("after"));
        QTest::keyClick(field, Qt::Key_Return);
    });
    EXPECT_EQ(
        userInterface.enterText(QStringLiteral("Title"), QStringLiteral("Message"), QStringLiteral("before")),
        std::optional(QStringLiteral("after")));
    withNextDialog([](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    EXPECT_EQ(userInterface.enterText({}, {}, QStringLiteral("before")), std::nullopt);

    withNextDialog([](QWidget *dialog) {
        dialog->findChild<QSpinBox *>(QStringLiteral("numberField"))->setValue(4);
        dialog->findChild<QAbstractButton *>(QStringLiteral("positionMatrix End"))->click();
        qobject_cast<QDialog *>(dialog)->accept();
    });
    const auto trimmed = userInterface.trimCharacters();
    ASSERT_TRUE(trimmed.has_value());
    EXPECT_EQ(trimmed->number, 4);
    EXPECT_EQ(trimmed->position, 1);

    UserInterface::CustomTagRows rows;
    rows[7] = {QStringLiteral("MOOD"), QStringLiteral("calm")};
    const auto editLast = [](QWidget *dialog) {
        auto *value = dialog->findChild<QLineEdit *>(QStringLiteral("customTagValueText8"));
        EXPECT_EQ(value->text(), QStringLiteral("calm"));
        value->setText(QStringLiteral("wild"));
    };
    withNextDialog([&](QWidget *dialog) {
        editLast(dialog);
        qobject_cast<QDialog *>(dialog)->reject();
    });
    EXPECT_EQ(userInterface.editCustomTags(rows)[7].second, QStringLiteral("calm"));
    withNextDialog([&](QWidget *dialog) {
        editLast(dialog);
        qobject_cast<QDialog *>(dialog)->accept();
    });
    EXPECT_EQ(userInterface.editCustomTags(rows)[7].second, QStringLiteral("wild"));
}

TEST_F(DialogsTest, SavePathProposesANameAndMayBeCancelled)
{
    withNextDialog([](QWidget *dialog) {
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        EXPECT_EQ(name->text(), QStringLiteral("md5sum.md5"));
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Save md5 as..."));
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(userInterface.savePath({}, QStringLiteral("Save md5 as..."), QStringLiteral("md5sum.md5")),
              std::nullopt);
}

TEST_F(DialogsTest, TextFieldsFollowTheirModelBothWays)
{
    TextControl control;
    QWidget parent;
    auto *field = new QLineEdit(&parent);
    Bindings::bind(control, field);
    control.setText(QStringLiteral("from the model"));
    EXPECT_EQ(field->text(), QStringLiteral("from the model"));
    field->setText(QStringLiteral("typed"));
    EXPECT_EQ(control.text(), QStringLiteral("typed"));
    field->setCursorPosition(2);
    control.setEnabled(false);
    EXPECT_FALSE(field->isEnabled());
    EXPECT_EQ(field->cursorPosition(), 2);
}

TEST_F(DialogsTest, ProgressPanelShowsItsValue)
{
    StatusPanelController progress;
    auto *bar = progress.findChild<QProgressBar *>();
    progress.setDeterminate(0, 10);
    progress.setProgress(3);
    progress.incrementProgress(2);
    EXPECT_EQ(bar->value(), 5);
    progress.setInDeterminate();
    progress.startAnimation();
    EXPECT_EQ(bar->maximum(), 0);
    progress.stopAnimation();
    EXPECT_EQ(bar->maximum(), 10);
}

} // namespace kruv::test
