// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The working tabs: files in, options, the command, and files out.

#include "gui/WindowFixture.h"
#include "support/Audio.h"
#include "tabs/EncodeTab.h"
#include "tabs/LossyTab.h"
#include "tasks/KruvTask.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QSlider>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString decode = u"decode"_s;
const QString encode = u"encode"_s;
const QString checksum = u"checksum"_s;

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

    const QString album = folder.makeFolder(u"album"_s);
    folder.makeFolder(u"album/disc 2"_s);
    folder.write(u"album/10 Ten.wav"_s, "0123456789");
    folder.write(u"album/2 Two.FLAC"_s, "0123456789");
    folder.write(u"album/disc 2/1 %41 & \"One\".aiff"_s, "0123456789");
    folder.write(u"album/notes.txt"_s, "skipped");
    folder.write(u"album/.DS_Store"_s, "skipped");
    answerQuestion(u"OK"_s);
    drop(encode, {album});

    const QStringList expected{u"2 Two.FLAC"_s, u"10 Ten.wav"_s, u"1 %41 & \"One\".aiff"_s};
    EXPECT_EQ(rowsOf(fileList(encode)), expected);
    EXPECT_EQ(fileList(encode)->model()->index(1, 0).data(Qt::ToolTipRole).toString(),
              album + u"/10 Ten.wav"_s);
    EXPECT_TRUE(find<QPushButton>(page(encode), "command")->isEnabled());
    auto *summary = find<QLabel>(page(encode), "summary");
    EXPECT_TRUE(waitUntil([&] { return summary->text() == u"3 files, 30 bytes"; }))
        << summary->text().toStdString();

    ASSERT_TRUE(waitUntil([this] { return pendingAnswers == 0; }));
    EXPECT_EQ(questions.front().title,
              u"Some files types were not recognized by this tab and were skipped"_s);
    click(encode, "clear");
    EXPECT_EQ(fileList(encode)->model()->rowCount(), 0);
    EXPECT_FALSE(find<QPushButton>(page(encode), "command")->isEnabled());
    EXPECT_FALSE(fileList(encode)->isVisible());
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
    EXPECT_EQ(rowsOf(list), (QStringList{u"2.FLAC"_s, u"3.flac"_s, u"4.shn"_s}));
    EXPECT_FALSE(list->selectionModel()->hasSelection());

    QStringList texts;
    withNextDialog([&texts](QWidget *popup) {
        auto *menu = qobject_cast<QMenu *>(popup);
        ASSERT_NE(menu, nullptr);
        for (const QAction *action : menu->actions()) {
            texts.append(action->text());
        }
        chooseExtension(menu, u"FLAC"_s);
    });
    Q_EMIT list->customContextMenuRequested({5, 5});
    EXPECT_EQ(texts, (QStringList{u"Delete selected file(s)"_s, u"Delete files with extension:"_s}));
    EXPECT_EQ(rowsOf(list), (QStringList{u"3.flac"_s, u"4.shn"_s}));
    EXPECT_TRUE(QFile::exists(files[0]) && QFile::exists(files[1]));
}

TEST_F(TabViewTest, ShowsWhatTheOptionsModelsSay)
{
    EncodeTab &tab = controller.encodeTab();
    window->selectTab(encode);
    auto *pages = find<QStackedWidget>(page(encode), "formatPages");
    EXPECT_TRUE(find<QAbstractButton>(page(encode), "format flac")->isChecked());
    EXPECT_EQ(pages->currentIndex(), tab.outputFormatMatrix().selectedIndex());

    toggle(encode, "flacVerifyButton");
    EXPECT_TRUE(tab.flacVerifyButton().isOn());
    find<QSlider>(page(encode), "flacSlider")->setValue(7);
    EXPECT_EQ(tab.flacSlider().value(), 7);
    EXPECT_EQ(preferences.integer(u"encodeFlacLevel"_s), 7);
    tab.flacLaxButton().setOn(true);
    EXPECT_TRUE(find<QAbstractButton>(page(encode), "flacLaxButton")->isChecked());

    for (const QString &id : tab.outputFormatMatrix().ids()) {
        page(encode)->findChild<QAbstractButton *>(u"format "_s + id)->click();
        EXPECT_EQ(tab.outputFormatMatrix().selectedId(), id);
        EXPECT_EQ(pages->currentIndex(), tab.outputFormatMatrix().selectedIndex());
    }
    tab.outputFormatMatrix().select(-1);
    EXPECT_FALSE(find<QAbstractButton>(page(encode), "format flac")->isChecked());
    EXPECT_FALSE(find<QAbstractButton>(page(encode), "flacVerifyButton")->isEnabled());

    auto *throughErrors = find<QAbstractButton>(page(decode), "decodeFlacThroughErrors");
    EXPECT_TRUE(throughErrors->isHidden());
    drop(decode, {folder.write(u"a.flac"_s, "x")});
    EXPECT_FALSE(throughErrors->isHidden());
}

TEST_F(TabViewTest, EncodesWhatTheCommandLineEncodes)
{
    const QString sources = folder.makeFolder(u"in put"_s);
    for (unsigned track = 1; track <= 3; ++track) {
        writeWav(u"%1/%2 Track's \"%2\" %41.wav"_s.arg(sources).arg(track), {.seed = track});
    }
    const QString byWindow = folder.makeFolder(u"window"_s);
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
    ASSERT_TRUE(waitUntil([this] { return fileList(encode)->model()->rowCount() == 0; }));
    ASSERT_TRUE(waitForJobs());

    const QString byCommand = folder.makeFolder(u"command"_s);
    QProcess process;
    process.start(QStringLiteral(KRUV_PROGRAM),
                  {encode, u"--to"_s, u"flac"_s, u"--level"_s, u"8"_s, u"--fingerprints"_s, u"--json"_s,
                   u"--output"_s, byCommand, sources});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    EXPECT_EQ(process.readAllStandardOutput().count("\"event\":\"ended\""), jobs.size());

    const QStringList outputs = QDir(byWindow).entryList(QDir::Files);
    EXPECT_EQ(outputs.size(), 4); // three tracks and the fingerprints
    EXPECT_EQ(outputs, QDir(byCommand).entryList(QDir::Files));
    for (const QString &name : outputs.filter(u".flac"_s)) {
        EXPECT_EQ(readFile(byWindow + u'/' + name), readFile(byCommand + u'/' + name)) << name.toStdString();
    }
}

TEST_F(TabViewTest, ShowsTheLossyOptionsOfTheFormatAndCorrectsWhatIsTyped)
{
    const QString lossy = u"lossy"_s;
    window->selectTab(lossy);
    auto *rate = find<QComboBox>(find<QStackedWidget>(page(lossy), "formatPages")->widget(0), "comboBox");
    toggle(lossy, "mp3Matrix vbr");
    EXPECT_FALSE(rate->isVisible());
    toggle(lossy, "mp3Matrix cbr");
    EXPECT_TRUE(rate->isVisible());
    rate->lineEdit()->selectAll();
    QTest::keyClicks(rate, u"79\r"_s);
    EXPECT_EQ(controller.lossyTab().comboLevel(), 256);
    toggle(lossy, "format he-aac");
    EXPECT_EQ(rate->currentText() + rate->itemText(0), u"6024"_s);
}

TEST_F(TabViewTest, LabelsOfLossySettingsComeAndGoWithThemAndNothingBelowMoves)
{
    const QString lossy = u"lossy"_s;
    window->selectTab(lossy);
    LossyTab &tab = controller.lossyTab();
    auto *pages = find<QStackedWidget>(page(lossy), "formatPages");
    const int height = pages->height();
    for (int format = 0; format < pages->count(); ++format) {
        tab.outputFormatMatrix().select(format);
        const auto toggles = pages->currentWidget()->findChildren<QAbstractButton *>();
        for (QAbstractButton *mode : toggles) {
            mode->click();
            serveEvents();
            EXPECT_EQ(pages->height(), height) << mode->text().toStdString();
            const auto labels = pages->currentWidget()->findChildren<QLabel *>();
            for (const QLabel *label : labels) {
                if (label->buddy()) {
                    EXPECT_EQ(label->isVisible(), label->buddy()->isVisible())
                        << label->text().toStdString() << " in mode " << mode->text().toStdString();
                }
            }
        }
    }
}

} // namespace kruv::test
