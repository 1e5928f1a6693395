// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The working tabs: files in, options, the command, and files out.

#include "checksums/ChecksumTab.h"
#include "gui/WindowFixture.h"
#include "lossless/EncodeTab.h"
#include "support/Audio.h"
#include "tasks/KruvTask.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QSlider>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>

namespace kruv::test {

namespace {

const QString decode = QStringLiteral("decode");
const QString encode = QStringLiteral("encode");
const QString checksum = QStringLiteral("checksum");
const QString about = QStringLiteral("about");

QStringList rowsOf(const QTreeView *view)
{
    QStringList rows;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        rows.append(view->model()->index(row, 0).data().toString());
    }
    return rows;
}

void chooseExtension(QMenu *menu, const QString &extension)
{
    QMenu *byExtension = menu->actions().constLast()->menu();
    Q_EMIT byExtension->aboutToShow();
    const QList<QAction *> actions = byExtension->actions();
    for (QAction *action : actions) {
        if (action->text() == extension) {
            action->trigger();
        }
    }
    menu->close();
}

} // namespace

using TabViewTest = WindowTest;

TEST_F(TabViewTest, ShowsTheTabsInOrderAndRemembersTheLastOne)
{
    auto *tabs = find<QTabWidget>(window.get(), "tabView");
    QStringList labels;
    for (int index = 0; index < tabs->count(); ++index) {
        labels.append(tabs->tabText(index));
    }
    EXPECT_EQ(labels, controller.tabLabels());
    EXPECT_EQ(tabs->currentWidget(), page(decode));
    EXPECT_EQ(window->size(), QSize(900, 600));

    QTest::keyClick(window.get(), Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(tabs->currentWidget(), page(checksum));
    EXPECT_EQ(controller.selectedTabViewItem(), 2);

    window->resize(700, 500);
    window->quit();
    const MainWindow next(controller, userInterface);
    EXPECT_EQ(next.findChild<QTabWidget *>()->currentIndex(), 2);
    EXPECT_EQ(next.size(), QSize(700, 500));
}

TEST_F(TabViewTest, TakesDroppedFoldersAndSaysOnceWhatItSkipped)
{
    EXPECT_FALSE(find<QPushButton>(page(encode), "command")->isEnabled());
    EXPECT_FALSE(find<QPushButton>(page(encode), "command")->toolTip().isEmpty());

    const QString album = folder.makeFolder(QStringLiteral("album"));
    folder.makeFolder(QStringLiteral("album/disc 2"));
    folder.write(QStringLiteral("album/10 Ten.wav"), "0123456789");
    folder.write(QStringLiteral("album/2 Two.FLAC"), "0123456789");
    folder.write(QStringLiteral("album/disc 2/1 %41 & \"One\".aiff"), "0123456789");
    folder.write(QStringLiteral("album/notes.txt"), "skipped");
    folder.write(QStringLiteral("album/.DS_Store"), "skipped");
    answerQuestion(QStringLiteral("OK"));
    drop(encode, {album});

    const QStringList expected{QStringLiteral("2 Two.FLAC"), QStringLiteral("10 Ten.wav"),
                               QStringLiteral("1 %41 & \"One\".aiff")};
    EXPECT_EQ(rowsOf(fileList(encode)), expected);
    EXPECT_EQ(fileList(encode)->model()->index(1, 0).data(Qt::ToolTipRole).toString(),
              album + QStringLiteral("/10 Ten.wav"));
    EXPECT_TRUE(find<QPushButton>(page(encode), "command")->isEnabled());
    auto *summary = find<QLabel>(page(encode), "summary");
    EXPECT_TRUE(waitUntil([&] { return summary->text() == u"3 files, 30 bytes"; }))
        << summary->text().toStdString();

    ASSERT_TRUE(waitUntil([this] { return pendingAnswers == 0; }));
    EXPECT_EQ(questions.front().title,
              QStringLiteral("Some files types were not recognized by this tab and were skipped"));
    click(encode, "clear");
    EXPECT_EQ(fileList(encode)->model()->rowCount(), 0);
    EXPECT_FALSE(find<QPushButton>(page(encode), "command")->isEnabled());
    EXPECT_FALSE(fileList(encode)->isVisible());
}

TEST_F(TabViewTest, DropsOnTheAboutTabGoWhereTheyFit)
{
    window->selectTab(about);
    drop(about, {folder.write(QStringLiteral("a.flac"), "x"), folder.write(QStringLiteral("b.wav"), "x")});
    EXPECT_EQ(rowsOf(fileList(decode)), QStringList{QStringLiteral("a.flac")});
    EXPECT_EQ(rowsOf(fileList(encode)), QStringList{QStringLiteral("b.wav")});
    EXPECT_EQ(controller.selectedTabViewItem(), 1);
}

TEST_F(TabViewTest, DeletesRowsByKeyAndByExtension)
{
    QStringList files;
    for (const char *name : {"1.flac", "2.FLAC", "3.flac", "4.shn"}) {
        files.append(folder.write(QString::fromLatin1(name), "x"));
    }
    drop(decode, files);
    QTreeView *list = fileList(decode);
    list->setFocus();
    list->setCurrentIndex(list->model()->index(0, 0));
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(rowsOf(list),
              (QStringList{QStringLiteral("2.FLAC"), QStringLiteral("3.flac"), QStringLiteral("4.shn")}));
    EXPECT_FALSE(list->selectionModel()->hasSelection());

    QStringList texts;
    withNextDialog([&texts](QWidget *popup) {
        auto *menu = qobject_cast<QMenu *>(popup);
        ASSERT_NE(menu, nullptr);
        for (const QAction *action : menu->actions()) {
            texts.append(action->text());
        }
        chooseExtension(menu, QStringLiteral("FLAC"));
    });
    Q_EMIT list->customContextMenuRequested({5, 5});
    EXPECT_EQ(texts, (QStringList{QStringLiteral("Delete selected file(s)"),
                                  QStringLiteral("Delete files with extension:")}));
    EXPECT_EQ(rowsOf(list), (QStringList{QStringLiteral("3.flac"), QStringLiteral("4.shn")}));
    EXPECT_TRUE(QFile::exists(files[0]) && QFile::exists(files[1]));
}

TEST_F(TabViewTest, WidensTheColumnToTheWidestName)
{
    const QString longName = QString(150, u'w') + QStringLiteral(".wav");
    drop(encode, {folder.write(QStringLiteral("a.wav"), "x")});
    QTreeView *list = fileList(encode);
    EXPECT_EQ(list->columnWidth(0), std::max(211, list->viewport()->width()));
    drop(encode, {folder.write(longName, "x")});
    const int widest = list->fontMetrics().horizontalAdvance(longName);
    EXPECT_GE(list->columnWidth(0), static_cast<int>(widest * 1.1));
    EXPECT_LE(list->columnWidth(0), static_cast<int>(widest * 1.1) + 1);
}

TEST_F(TabViewTest, ShowsWhatTheOptionsModelsSay)
{
    EncodeTab &tab = controller.encodeTab();
    window->selectTab(encode);
    auto *pages = find<QStackedWidget>(page(encode), "formatPages");
    EXPECT_TRUE(find<QAbstractButton>(page(encode), "Format FLAC")->isChecked());
    EXPECT_EQ(pages->currentIndex(), tab.outputFormatMatrix().selectedIndex());

    toggle(encode, "flacVerifyButton");
    EXPECT_TRUE(tab.flacVerifyButton().isOn());
    find<QSlider>(page(encode), "flacSlider")->setValue(7);
    EXPECT_EQ(tab.flacSlider().value(), 7);
    EXPECT_EQ(preferences.integer(QStringLiteral("encodeFlacLevel")), 7);
    tab.flacLaxButton().setOn(true);
    EXPECT_TRUE(find<QAbstractButton>(page(encode), "flacLaxButton")->isChecked());

    for (int index = 0; index < tab.outputFormatMatrix().titles().size(); ++index) {
        const QString title = tab.outputFormatMatrix().titles()[index];
        auto *button = page(encode)->findChild<QAbstractButton *>(QStringLiteral("Format ") + title);
        EXPECT_EQ(button->isEnabled(), tab.outputFormatMatrix().isAvailable(index)) << title.toStdString();
        EXPECT_EQ(button->toolTip().isEmpty(), button->isEnabled());
    }
    tab.outputFormatMatrix().select(-1);
    EXPECT_FALSE(find<QAbstractButton>(page(encode), "Format FLAC")->isChecked());
    EXPECT_FALSE(find<QAbstractButton>(page(encode), "flacVerifyButton")->isEnabled());

    auto *throughErrors = find<QAbstractButton>(page(decode), "decodeFlacThroughErrors");
    EXPECT_TRUE(throughErrors->isHidden());
    drop(decode, {folder.write(QStringLiteral("a.flac"), "x")});
    EXPECT_FALSE(throughErrors->isHidden());
}

TEST_F(TabViewTest, EncodesWhatTheCommandLineEncodes)
{
    const QString sources = folder.makeFolder(QStringLiteral("in put"));
    for (unsigned track = 1; track <= 3; ++track) {
        writeWav(QStringLiteral("%1/%2 Track's \"%2\" %41.wav").arg(sources).arg(track), {.seed = track});
    }
    const QString byWindow = folder.makeFolder(QStringLiteral("window"));
    window->selectTab(encode);
    drop(encode, {sources});
    find<QSlider>(page(encode), "flacSlider")->setValue(8);
    toggle(encode, "generateFFPButton");
    QStringList jobs;
    QObject::connect(&queue(), &KruvTaskQueue::taskEnded, window.get(), [&jobs](KruvTask &task) {
        EXPECT_FALSE(task.error()) << task.results()->results().toStdString();
        jobs.append(task.title());
    });
    answerFileDialog(byWindow);
    QTest::keyClick(window.get(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(fileList(encode)->model()->rowCount(), 0);
    ASSERT_TRUE(waitForJobs());

    const QString byCommand = folder.makeFolder(QStringLiteral("command"));
    QProcess process;
    process.start(QStringLiteral(KRUV_PROGRAM),
                  {encode, QStringLiteral("--to"), QStringLiteral("flac"), QStringLiteral("--level"),
                   QStringLiteral("8"), QStringLiteral("--fingerprints"), QStringLiteral("--json"),
                   QStringLiteral("--output"), byCommand, sources});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    EXPECT_EQ(process.readAllStandardOutput().count("\"event\":\"ended\""), jobs.size());

    const QStringList outputs = QDir(byWindow).entryList(QDir::Files);
    EXPECT_EQ(outputs.size(), 4); // three tracks and the fingerprints
    EXPECT_EQ(outputs, QDir(byCommand).entryList(QDir::Files));
    for (const QString &name : outputs.filter(QStringLiteral(".flac"))) {
        EXPECT_EQ(readFile(byWindow + u'/' + name), readFile(byCommand + u'/' + name)) << name.toStdString();
    }
}

TEST_F(TabViewTest, AsksBeforeItReplacesOrDeletes)
{
    const QString wav = folder.file(QStringLiteral("a.wav"));
    writeWav(wav);
    const QString existing = folder.write(QStringLiteral("a.flac"), "precious");
    drop(encode, {wav});
    toggle(encode, "sourceEncodeButton");
    answerQuestion(QStringLiteral("No"));
    click(encode, "command");
    toggle(encode, "deleteOriginalsButton");
    answerQuestion(QStringLiteral("No"));
    click(encode, "command");

    ASSERT_EQ(questions.size(), 2U);
    EXPECT_EQ(questions[0].title, QStringLiteral("One of the output files already exists and will be "
                                                 "overwritten.  Are you sure you want to continue?"));
    EXPECT_EQ(questions[0].defaultButton, QStringLiteral("No"));
    EXPECT_EQ(questions[1].title, QStringLiteral("You have chosen to delete the original files.  Are you "
                                                 "sure you want to continue?"));
    EXPECT_EQ(questions[1].defaultButton, QStringLiteral("Yes"));
    EXPECT_EQ(rowsOf(fileList(encode)), QStringList{QStringLiteral("a.wav")});
    EXPECT_EQ(queue().taskCount(), 0);
    EXPECT_EQ(readFile(existing), "precious");
}

TEST_F(TabViewTest, NamesTheChecksumCommandByWhatItDoes)
{
    window->selectTab(checksum);
    auto *command = find<QPushButton>(page(checksum), "command");
    auto *kinds = find<QWidget>(page(checksum), "Kind of checksum file");
    EXPECT_EQ(command->text().remove(u'&'), QStringLiteral("Verify"));
    EXPECT_TRUE(kinds->isHidden());
    const QString create = controller.checksumTab().commandOptions().titles()[1];
    toggle(checksum, qPrintable(QStringLiteral("Command ") + create));
    EXPECT_EQ(command->text().remove(u'&'), QStringLiteral("Create list"));
    EXPECT_FALSE(kinds->isHidden());
}

} // namespace kruv::test
