// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/FileStamp.h"
#include "gui/HistoryWindow.h"
#include "gui/WindowFixture.h"
#include "support/EnvironmentVariable.h"

#include <QAction>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSysInfo>
#include <QTest>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

namespace {

struct OwnJournal
{
    TemporaryFolder journalFolder;
    EnvironmentVariable variable{"KRUV_JOURNAL", QFile::encodeName(journalFolder.file(u"journal.db"_s))};
};

/// The window of a program that remembers.
class HistoryWindowTest : private OwnJournal, public WindowTest
{
protected:
    HistoryWindow *history()
    {
        find<QAction>(window.get(), "history")->trigger();
        for (QWidget *each : QApplication::topLevelWidgets()) {
            if (auto *found = qobject_cast<HistoryWindow *>(each)) {
                return found;
            }
        }
        return nullptr;
    }
    template <typename Widget> Widget *in(HistoryWindow *where, const char *name)
    {
        return find<Widget>(where, name);
    }
    int rows(HistoryWindow *where, const char *list)
    {
        return in<QTreeView>(where, list)->model()->rowCount();
    }
    /// The menu as it opens.
    QAction *undo()
    {
        for (QAction *each : window->menuBar()->actions()) {
            if (each->text() == u"&Edit") {
                Q_EMIT each->menu()->aboutToShow();
            }
        }
        return find<QAction>(window.get(), "undo");
    }
    /// Files that were renamed a moment ago.
    void rename(const QStringList &names)
    {
        std::vector<DoneRecord> done;
        for (const QString &name : names) {
            const QString to = folder.write(u"new "_s + name, "audio");
            const FileStamp stamp = *FileStamp::of(to);
            done.push_back({.entry = {folder.file(name), to, EntryRecord::Action::Rename},
                            .receipt = {.sources = {{folder.file(name), stamp}}, .outputs = {{to, stamp}}}});
        }
        controller.doRecorded(u"util"_s, done, [] {});
        serveEvents();
    }
};

} // namespace

TEST_F(HistoryWindowTest, UndoNamesWhatItTakesBackAndDoesIt)
{
    EXPECT_EQ(undo()->text(), u"Nothing to Undo"_s);
    EXPECT_FALSE(undo()->isEnabled());
    rename({u"a.wav"_s, u"b.wav"_s});
    EXPECT_EQ(undo()->text(), u"&Undo Renaming of 2 Files"_s);
    writeFile(folder.file(u"a.wav"_s), "somebody else's");
    undo()->trigger();
    ASSERT_TRUE(waitForJobs());
    EXPECT_EQ(readFile(folder.file(u"a.wav"_s)), "somebody else's");
    EXPECT_TRUE(QFile::exists(folder.file(u"new a.wav"_s)));
    EXPECT_EQ(readFile(folder.file(u"b.wav"_s)), "audio");
    EXPECT_EQ(undo()->text(), u"&Undo Renaming of 1 File"_s) << "what is left";
}

TEST_F(HistoryWindowTest, ShowsTwentyThousandJobsFindsOneAndExports)
{
    HistoryWindow *shown = history();
    ASSERT_NE(shown, nullptr);
    auto *message = in<QLabel>(shown, "historyMessage");
    EXPECT_TRUE(waitUntil([&] { return message->text().startsWith(u"Nothing was done yet"); }));

    Journal &journal = controller.journal();
    constexpr int count = 20'000;
    std::vector<EntryRecord> entries;
    entries.reserve(count);
    for (int index = 0; index < count; ++index) {
        entries.push_back({folder.file(u"song %1.wav"_s.arg(index)),
                           folder.file(u"song %1.flac"_s.arg(index)), EntryRecord::Action::Make});
    }
    const auto run =
        journal.addRun({.command = u"encode"_s, .process = QSysInfo::machineHostName() + u"\nboot\n1\n1"_s});
    journal.addEntries(run, entries);
    rename({u"a.wav"_s});
    history();
    ASSERT_TRUE(
        waitUntil([&] { return rows(shown, "historyRuns") == 2 && rows(shown, "historyJobs") == 1; }));
    EXPECT_FALSE(message->isVisible());
    EXPECT_TRUE(in<QPushButton>(shown, "historyUndo")->isEnabled());
    EXPECT_FALSE(in<QPushButton>(shown, "historyContinue")->isEnabled()) << "it is done";

    QTest::keyClick(in<QTreeView>(shown, "historyRuns"), Qt::Key_Down);
    EXPECT_TRUE(waitUntil([&] { return rows(shown, "historyJobs") == 20'000; }));
    auto *search = in<QLineEdit>(shown, "historySearch");
    QTest::keyClicks(search, u"SONG 19999"_s);
    EXPECT_TRUE(waitUntil([&] { return rows(shown, "historyJobs") == 1; }));
    for (const QString &name : {u"found.csv"_s, u"found.json"_s}) {
        answerFileDialog(folder.file(name));
        in<QPushButton>(shown, "historyExport")->click();
        EXPECT_EQ(readFile(folder.file(name)).count("song 19999.flac"), 1) << name.toStdString();
    }
    search->clear();
    EXPECT_TRUE(waitUntil([&] {
        return rows(shown, "historyJobs") == 1 &&
               in<QTreeView>(shown, "historyRuns")->currentIndex().isValid();
    }));
}

} // namespace kruv::test
