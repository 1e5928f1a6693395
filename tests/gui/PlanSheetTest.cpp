// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What a command shows before it starts, where it is not plain.

#include "gui/PlanModel.h"
#include "gui/WindowFixture.h"
#include "support/Audio.h"
#include "tabs/EncodeTab.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QTest>
#include <QtEndian>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString encode = u"encode"_s;

class PlanSheetTest : public WindowTest
{
protected:
    PlanSheetTest()
    {
        QApplication::setDoubleClickInterval(0); // who presses twice here has seen enough
        tab.sourceEncodeButton().setOn(true);
        QObject::connect(&tab.review(), &Review::stateChanged, window.get(),
                         [this] { timesShown += tab.review().isShown(); });
        window->selectTab(encode);
    }

    /// Tracks 1 to 3 go into the list of the tab, and those.
    void dropTracks(QStringList more = {})
    {
        for (unsigned track = 1; track <= 3; ++track) {
            more.append(u"%1/%2.wav"_s.arg(album).arg(track));
            writeWav(more.constLast(), {.frames = 4410, .seed = track});
        }
        drop(encode, more);
    }
    QString in(const QString &name) const { return album + u'/' + name; }
    QWidget *sheet() const { return find<QWidget>(page(encode), "planSheet"); }
    QPushButton *command() const { return find<QPushButton>(page(encode), "command"); }
    QString text(const char *label) const { return find<QLabel>(sheet(), label)->text(); }
    QAbstractItemModel *rows() const { return find<QTreeView>(sheet(), "planTable")->model(); }
    QString cell(int row, PlanModel::Column column) const
    {
        return rows()->index(row, column).data().toString();
    }
    void choose(const char *button)
    {
        auto *found = find<QAbstractButton>(sheet(), button);
        EXPECT_TRUE(found->isVisible()) << button;
        found->click();
    }
    [[nodiscard]] bool showsAll() const
    {
        return waitUntil(
            [this] { return sheet()->isVisible() && tab.review().unseen() == 0 && command()->isEnabled(); });
    }
    [[nodiscard]] bool pressAndSeeAll()
    {
        click(encode, "command");
        return showsAll();
    }
    [[nodiscard]] bool run()
    {
        QTest::qWait(2); // beyond a double click
        click(encode, "command");
        return waitUntil([this] { return !tab.review().isUnderWay(); }) && waitForJobs();
    }

    EncodeTab &tab = controller.encodeTab();
    const QString album = folder.makeFolder(u"al bum"_s);
    int timesShown = 0;
};

} // namespace

TEST_F(PlanSheetTest, PlainCommandsStartAtOnce)
{
    dropTracks();
    click(encode, "command");
    ASSERT_TRUE(waitUntil([this] { return tab.fileList().isEmpty(); }));
    ASSERT_TRUE(waitForJobs());
    EXPECT_TRUE(QFile::exists(in(u"3.flac"_s)));
    EXPECT_EQ(timesShown, 0);
}

TEST_F(PlanSheetTest, WhatIsThereIsSkippedReplacedOrKept)
{
    const struct
    {
        const char *choice;
        QString headline;
        QString command;
        bool isReplaced;
        bool isNumbered;
    } rows[] = {
        {"existing skip", u"2 will be made · 1 is there already"_s, u"&Encode 2"_s, false, false},
        {"existing replace", u"3 will be made · 1 in place of what is there"_s, u"&Encode 3"_s, true, false},
        {"existing both", u"3 will be made"_s, u"&Encode 3"_s, false, true}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.choice);
        QFile::remove(in(u"1.flac"_s));
        QFile::remove(in(u"3.flac"_s));
        writeFile(in(u"2.flac"_s), "old");
        dropTracks();
        ASSERT_TRUE(pressAndSeeAll());
        choose(row.choice);
        ASSERT_TRUE(waitUntil([&] { return text("planHeadline") == row.headline && command()->isEnabled(); }))
            << text("planHeadline").toStdString();
        EXPECT_EQ(command()->text(), row.command);
        ASSERT_TRUE(run());
        EXPECT_TRUE(QFile::exists(in(u"1.flac"_s)) && QFile::exists(in(u"3.flac"_s)));
        EXPECT_EQ(readFile(in(u"2.flac"_s)) != "old", row.isReplaced);
        EXPECT_EQ(QFile::exists(in(u"2 (2).flac"_s)), row.isNumbered);
        EXPECT_FALSE(sheet()->isVisible());
    }
}

TEST_F(PlanSheetTest, WhatCantBeMadeIsNamedWithItsReasonAndTheRestIsDone)
{
    writeFile(in(u"0.wav"_s), "no audio");
    writeWav(in(u"a.wav"_s), {.frames = 4410});
    writeAiff(in(u"a.aiff"_s), {.frames = 4410}); // both become a.flac
    dropTracks({in(u"0.wav"_s), in(u"a.wav"_s), in(u"a.aiff"_s)});
    ASSERT_TRUE(pressAndSeeAll());
    EXPECT_EQ(text("planHeadline"), u"3 will be made · 3 can't be made"_s);
    EXPECT_TRUE(cell(0, PlanModel::Notes).startsWith(u"0.wav holds no audio"))
        << cell(0, PlanModel::Notes).toStdString();
    choose("kind refuse");
    EXPECT_EQ(rows()->rowCount(), 3);

    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(sheet()->isVisible());
    EXPECT_EQ(command()->text(), u"&Encode"_s);
    EXPECT_EQ(tab.fileList().count(), 6);
    EXPECT_FALSE(QFile::exists(in(u"1.flac"_s)));

    ASSERT_TRUE(pressAndSeeAll());
    EXPECT_EQ(rows()->rowCount(), 6) << "an earlier choice of what is shown";
    ASSERT_TRUE(run());
    EXPECT_TRUE(QFile::exists(in(u"1.flac"_s)));
    EXPECT_FALSE(QFile::exists(in(u"a.flac"_s)));
}

TEST_F(PlanSheetTest, OriginalsThatHoldMoreStayUnlessAllMayGo)
{
    for (const bool all : {false, true}) {
        SCOPED_TRACE(all);
        dropTracks();
        QByteArray wav = readFile(in(u"2.wav"_s)) + QByteArray("note\4\0\0\0junk", 12);
        qToLittleEndian(static_cast<quint32>(wav.size() - 8), wav.data() + 4);
        writeFile(in(u"2.wav"_s), wav);
        tab.deleteOriginalsButton().setOn(true);
        ASSERT_TRUE(pressAndSeeAll());
        EXPECT_EQ(text("planWarning"), u"2 originals are deleted, each once its output is proven."_s);
        if (all) {
            choose("losses delete");
            EXPECT_EQ(text("planWarning"), u"3 originals are deleted, each once its output is proven."_s);
        }
        choose("kind loss");
        EXPECT_EQ(rows()->rowCount(), 1);
        ASSERT_TRUE(run());
        EXPECT_FALSE(QFile::exists(in(u"1.wav"_s)));
        EXPECT_EQ(QFile::exists(in(u"2.wav"_s)), !all);
        QFile::remove(in(u"1.flac"_s));
        QFile::remove(in(u"2.flac"_s));
        QFile::remove(in(u"3.flac"_s));
    }
    EXPECT_TRUE(questions.empty());
}

TEST_F(PlanSheetTest, MenuShowsThePlanOfAPlainCommandForAnyFolder)
{
    dropTracks();
    find<QAction>(window.get(), "showPlan")->trigger();
    ASSERT_TRUE(showsAll());
    EXPECT_EQ(command()->text(), u"&Encode 3"_s);
    const QString other = folder.makeFolder(u"other"_s);
    answerFileDialog(other);
    choose("otherFolder");
    ASSERT_TRUE(showsAll());
    EXPECT_TRUE(text("planFacts").remove(QChar(0x200B)).contains(other)) << text("planFacts").toStdString();
    ASSERT_TRUE(run());
    EXPECT_EQ(namesIn(other), (QStringList{u"1.flac"_s, u"2.flac"_s, u"3.flac"_s}));

    find<QAction>(window.get(), "showPlan")->trigger();
    EXPECT_FALSE(tab.review().isUnderWay()) << "the list is empty";
    dropTracks();
    find<QAction>(window.get(), "showPlan")->trigger();
    ASSERT_TRUE(showsAll());
    drop(encode, {folder.write(u"late.wav"_s, "x")});
    EXPECT_FALSE(sheet()->isVisible()) << "it isn't the plan of this list any more";
}

TEST(PlanModelTest, TwentyThousandEntriesAreThereAndNarrowedDownAtOnce)
{
    std::vector<PlanEntry> entries;
    for (int index = 0; index < 20'000; ++index) {
        const QString name = u"/music/disc %1/%2"_s.arg(index % 1000).arg(index);
        entries.push_back({.sources = {name + u".wav"_s}, .output = name + u".flac"_s});
        if (index % 100 == 7) {
            entries.back().action = PlanEntry::Action::Refuse;
            entries.back().reason = name + u".wav holds no audio."_s;
        }
    }
    PlanModel model;
    QElapsedTimer time;
    time.start();
    model.setEntries(entries);
    EXPECT_EQ(model.rowCount(), 20'000);
    model.setKind(PlanModel::Kind::Refuse);
    EXPECT_EQ(model.rowCount(), 200);
    EXPECT_EQ(model.index(0, PlanModel::Source).data().toString(), u"disc 7/7.wav"_s);
    EXPECT_EQ(model.index(0, PlanModel::Notes).data().toString(), u"7.wav holds no audio."_s);
    EXPECT_LT(time.elapsed(), 1000);
}

TEST_F(PlanSheetTest, KeepFoldersIsForOutputsThatGoIntoOneFolder)
{
    auto *keep = find<QAbstractButton>(page(encode), "keepFoldersButton");
    EXPECT_FALSE(keep->isEnabled());
    tab.sourceEncodeButton().setOn(false);
    EXPECT_TRUE(keep->isEnabled());
    keep->click();
    folder.makeFolder(u"al bum/disc 1"_s);
    writeWav(in(u"disc 1/x.wav"_s), {.frames = 4410});
    drop(encode, {album});
    const QString other = folder.makeFolder(u"other"_s);
    answerFileDialog(other);
    click(encode, "command");
    ASSERT_TRUE(waitUntil([this] { return tab.fileList().isEmpty(); }) && waitForJobs());
    EXPECT_TRUE(QFile::exists(other + u"/disc 1/x.flac"_s));
    EXPECT_EQ(timesShown, 0);
}

} // namespace kruv::test
