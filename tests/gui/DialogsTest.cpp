// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Preferences, prompts and results windows.

#include "gui/OutputWindowController.h"
#include "gui/PreferencesController.h"
#include "gui/WindowFixture.h"
#include "tabs/SHNtoolTab.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QFontInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QThread>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

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
    EXPECT_EQ(preferences.integer(u"maxThreads"_s), 1);

    find<QCheckBox>(&panes, "warnOnDelete")->click();
    EXPECT_FALSE(preferences.boolean(u"warnOnDelete"_s));
    find<QAbstractButton>(&panes, "trashOrDelete trash")->click();
    EXPECT_EQ(preferences.integer(u"trashOrDelete"_s), 1);
    auto *extension = find<QLineEdit>(&panes, "ffpExtension");
    extension->setText(u"ffp"_s);
    EXPECT_EQ(preferences.string(u"ffpExtension"_s), u"ffp"_s);
    auto *preview = find<QLabel>(&panes, "currentFormat");
    EXPECT_EQ(preview->text(), u"01. FileName 01:00:00"_s);
    find<QLineEdit>(&panes, "shnlenTrackListingFormat")->setText(u"%name (%time)"_s);
    EXPECT_EQ(preview->text(), u"FileName (01:00:00)"_s);
    EXPECT_EQ(preferences.string(u"shntoolNamesFormat"_s), u"%name (%time)"_s);
}

TEST_F(DialogsTest, ResultsCanBeFoundCopiedAndSaved)
{
    const QString text = u"first.flac: ok\nsecond.flac: ERROR\n"_s;
    userInterface.openResultsWindow(text, u"Verify FLAC"_s);
    userInterface.openResultsWindow(u"other"_s, u"Output"_s);
    OutputWindowController *results = resultsWindow(0);
    ASSERT_TRUE(results && resultsWindow(1));
    EXPECT_NE(results->pos(), resultsWindow(1)->pos());
    if (results->windowTitle() != u"Verify FLAC") {
        results = resultsWindow(1);
    }
    EXPECT_EQ(results->windowTitle(), u"Verify FLAC"_s);
    auto *view = find<QPlainTextEdit>(results, "outputText");
    EXPECT_EQ(view->toPlainText(), text);
    EXPECT_EQ(view->font().family(), u"Courier"_s);
    EXPECT_EQ(view->font().pointSize(), 10);

    results->activateWindow();
    QTest::keyClick(results, Qt::Key_F, Qt::ControlModifier);
    auto *field = find<QLineEdit>(results, "find");
    QTest::keyClicks(field, u"error"_s);
    EXPECT_EQ(view->textCursor().selectedText(), u"ERROR"_s);
    QTest::keyClicks(field, u"x"_s);
    EXPECT_NE(field->palette().color(QPalette::Text), QApplication::palette().color(QPalette::Text));

    QTest::mouseClick(find<QPushButton>(results, "copyAll"), Qt::LeftButton);
    EXPECT_EQ(QApplication::clipboard()->text(), text);
    const QString saved = folder.file(u"saved.txt"_s);
    answerFileDialog(saved);
    QTest::mouseClick(find<QPushButton>(results, "saveAs"), Qt::LeftButton);
    EXPECT_EQ(readFile(saved), text.toUtf8());
    resultsWindow(0)->close();
    serveEvents();
}

TEST_F(DialogsTest, ManyFailuresShareAWindow)
{
    for (int number = 1; number <= 100; ++number) {
        userInterface.openResultsWindow(u"no such tool"_s, u"track%1.wav"_s.arg(number));
    }
    EXPECT_EQ(resultsWindow(6), nullptr);
    QStringList titles;
    QString more;
    for (int number = 0; number < 6; ++number) {
        OutputWindowController *window = resultsWindow(number);
        ASSERT_NE(window, nullptr);
        titles << window->windowTitle();
        if (titles.back() == u"More output") {
            more = find<QPlainTextEdit>(window, "outputText")->toPlainText();
        }
    }
    EXPECT_TRUE(titles.contains(u"track5.wav"_s) && !titles.contains(u"track6.wav"_s));
    EXPECT_TRUE(more.startsWith(u"track6.wav:\nno such tool\n"_s) && more.contains(u"track100.wav"_s));
    while (OutputWindowController *window = resultsWindow(0)) {
        delete window;
    }
}

TEST_F(DialogsTest, PromptsReturnWhatWasEnteredOrNothing)
{
    withNextDialog([](QWidget *dialog) {
        auto *field = dialog->findChild<QLineEdit *>(u"enteredText"_s);
        EXPECT_EQ(field->text(), u"before"_s);
        field->setText(u"after"_s);
        QTest::keyClick(field, Qt::Key_Return);
    });
    EXPECT_EQ(userInterface.enterText(u"Title"_s, u"Message"_s, u"before"_s), std::optional(u"after"_s));
    withNextDialog([](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    EXPECT_EQ(userInterface.enterText({}, {}, u"before"_s), std::nullopt);

    withNextDialog([](QWidget *dialog) {
        dialog->findChild<QSpinBox *>(u"numberField"_s)->setValue(4);
        dialog->findChild<QAbstractButton *>(u"positionMatrix end"_s)->click();
        qobject_cast<QDialog *>(dialog)->accept();
    });
    const auto trimmed = userInterface.trimCharacters();
    ASSERT_TRUE(trimmed.has_value());
    EXPECT_EQ(trimmed->number, 4);
    EXPECT_EQ(trimmed->position, 1);

    UserInterface::CustomTagRows rows;
    rows[7] = {u"MOOD"_s, u"calm"_s};
    const auto editLast = [](QWidget *dialog) {
        auto *value = dialog->findChild<QLineEdit *>(u"customTagValueText8"_s);
        EXPECT_EQ(value->text(), u"calm"_s);
        value->setText(u"wild"_s);
    };
    withNextDialog([&](QWidget *dialog) {
        editLast(dialog);
        qobject_cast<QDialog *>(dialog)->reject();
    });
    EXPECT_EQ(userInterface.editCustomTags(rows)[7].second, u"calm"_s);
    withNextDialog([&](QWidget *dialog) {
        editLast(dialog);
        qobject_cast<QDialog *>(dialog)->accept();
    });
    EXPECT_EQ(userInterface.editCustomTags(rows)[7].second, u"wild"_s);
}

TEST_F(DialogsTest, TrackNamesAreTypedTrimmedAndUndone)
{
    SHNtoolTab &tab = controller.shntoolTab();
    tab.showNamesWindow();
    auto *names = find<QDialog>(window.get(), "TrackNameInputWindow");
    auto *text = find<QPlainTextEdit>(names, "names");
    auto *trim = find<QPushButton>(names, "trim");
    auto *undo = find<QPushButton>(names, "undo");
    EXPECT_TRUE(names->isVisible());
    QTest::keyClicks(text, u"01 One"_s);
    QTest::keyClick(text, Qt::Key_Return);
    QTest::keyClicks(text, u"02\u00a0Two"_s);
    EXPECT_FALSE(trim->isEnabled());
    text->selectAll();
    withNextDialog([](QWidget *dialog) {
        dialog->findChild<QSpinBox *>(u"numberField"_s)->setValue(3);
        qobject_cast<QDialog *>(dialog)->accept();
    });
    trim->click();
    EXPECT_EQ(tab.trackNameWindow().namesText(), u"One\nTwo"_s);
    EXPECT_EQ(text->textCursor().selectedText().size(), 7);
    EXPECT_EQ(undo->text(), u"&Undo Trim Text"_s);
    undo->click();
    EXPECT_EQ(tab.trackNameWindow().namesText(), u"01 One\n02\u00a0Two"_s);
    EXPECT_EQ(undo->text(), u"&Undo"_s);
    text->redo();
    EXPECT_EQ(undo->text(), u"&Undo Trim Text"_s);
    undo->click();
    QTest::keyClicks(text, u"!"_s);
    EXPECT_EQ(undo->text(), u"&Undo"_s);
    QTest::keyClick(names, Qt::Key_Escape);
    EXPECT_FALSE(names->isVisible());
    EXPECT_EQ(tab.names(), QStringList());
    tab.trackNameWindow().inputOK();
    EXPECT_EQ(tab.names(), (QStringList{u"01 One"_s, u"02\u00a0Two!"_s}));
}

} // namespace kruv::test
