// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/TabRun.h"
#include "support/Audio.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

class ChecksumTabTest : public testing::Test
{
protected:
    /// Presses the button for a list of `kind` over `files`, which the tab holds afterwards only if it keeps
    /// them.
    void create(const char *kind, bool besideSource, const QStringList &files)
    {
        ASSERT_TRUE(kruv.tab.createChecksumOptions().selectId(QString::fromLatin1(kind).toLower()));
        kruv.tab.sourceSaveButton().setOn(besideSource);
        kruv.run(ChecksumTab::CreateList, files);
    }
    QStringList listsIn(const QString &folder) const
    {
        return QDir(folder).entryList({u"*.md5"_s, u"*.st5"_s, u"*ffp*"_s}, QDir::Files);
    }

    TabRun kruv;
    QString one = kruv.folder.makeFolder(u"one"_s);
    QString two = kruv.folder.makeFolder(u"two"_s);
    QString first = kruv.folder.write(u"one/a.Wav"_s, "a");
    QString second = kruv.folder.write(u"two/b.wav"_s, "b");
};

TEST_F(ChecksumTabTest, ListsBesideTheirSourcesAskOnlyBeforeTheyReplace)
{
    create("MD5", true, {first});
    EXPECT_EQ(listsIn(one), QStringList(u"md5sum.md5"_s));
    kruv.preferences.setValue(u"checksumFileUsesOutputDirName"_s, true);
    create("MD5", true, {first});
    EXPECT_TRUE(QFile::exists(one + u"/one.md5"_s));
    EXPECT_TRUE(kruv.person.prompts.isEmpty());
    EXPECT_TRUE(kruv.tab.fileList().isEmpty());
    EXPECT_TRUE(kruv.person.questions.empty());
    for (const bool agrees : {false, true}) {
        kruv.person.buttonAnswers = {agrees ? 1 : 0};
        writeFile(one + u"/one.md5"_s, "another list");
        create("MD5", true, {first});
        EXPECT_EQ(readFile(one + u"/one.md5"_s) != "another list", agrees);
    }
}

TEST_F(ChecksumTabTest, AsksForAPlaceWithTheTitlesOfEachKind)
{
    const QString flac = kruv.folder.file(u"one/c.flac"_s);
    writeFile(flac, "not really");
    const QString asked = kruv.folder.file(u"asked"_s);
    kruv.person.textAnswers = {asked, std::nullopt, std::nullopt};
    create("MD5", true, {first, second});
    EXPECT_TRUE(QFile::exists(asked)) << "two folders: the place is asked for all the same";
    create("ST5", false, {first});
    EXPECT_TRUE(kruv.tab.fileList().isEmpty());
    create("FFP", false, {flac});
    EXPECT_EQ(kruv.tab.fileNames(), QStringList(flac)) << "a cancelled fingerprint list keeps the files";
    const auto titled = [](const char *title, const char *name) {
        return QStringList{QString::fromLatin1(title), QString::fromLatin1(title), QString::fromLatin1(name)};
    };
    EXPECT_EQ(kruv.person.prompts, titled("Save md5 as...", "md5sum.md5") +
                                       titled("Save st5 as...", "checksum.st5") +
                                       titled("Save fingerprint as...", "fingerprint.ffp.txt"));
    EXPECT_EQ(kruv.controller.taskQueue().taskCount(), 0);
}

TEST_F(ChecksumTabTest, FingerprintsGoToTheFirstFilesFolder)
{
    QStringList flacFiles;
    for (const QString &folder : {one, two}) {
        flacFiles << folder + u"/x.flac"_s;
        writeWav(folder + u"/x.wav"_s, {.frames = 100});
        outputOf(u"flac"_s, {u"-s"_s, u"x.wav"_s}, folder);
    }
    create("FFP", true, flacFiles + QStringList{first});
    const QByteArray list = readFile(one + u"/fingerprint.ffp.txt"_s);
    EXPECT_EQ(list.count("x.flac:"), 2);
    EXPECT_FALSE(list.contains("a.Wav"));
    EXPECT_TRUE(listsIn(two).isEmpty());
    EXPECT_TRUE(kruv.person.alerts.empty());

    QFile::remove(flacFiles[1]);
    kruv.person.buttonAnswers = {1};
    create("FFP", true, flacFiles);
    ASSERT_EQ(kruv.person.resultsWindows.size(), 1) << "an incomplete list is never made in silence";
    EXPECT_TRUE(kruv.person.resultsWindows[0].text.contains(u"FLAC__METADATA_CHAIN"_s));
}

TEST_F(ChecksumTabTest, KnowsListsByTheirNames)
{
    const char *lists[] = {"a.MD5", "b.st5", "c.Ffp", "d.fFp.TXT", "e.txt", "f.md5.txt", "g.wav"};
    QStringList files;
    for (const char *name : lists) {
        files << kruv.folder.write(QString::fromLatin1(name), "");
    }
    EXPECT_EQ(kruv.run(ChecksumTab::VerifyLists, files),
              u"Verify MD5: a.MD5\n\nVerify ST5: b.st5\n\nVerify FFP: c.Ffp\n\nVerify FFP: d.fFp.TXT\n\n"_s);
    EXPECT_EQ(kruv.person.resultsWindows.size(), 1) << "one report for the whole command";
    EXPECT_TRUE(kruv.tab.fileList().isEmpty());
}

TEST_F(ChecksumTabTest, DoesNothingWithoutFilesOfItsKind)
{
    const QString text = kruv.folder.write(u"notes.txt"_s, "");
    for (const char *kind : {"MD5", "ST5", "FFP"}) {
        create(kind, false, {text});
        EXPECT_TRUE(kruv.tab.fileList().isEmpty());
    }
    EXPECT_EQ(kruv.run(ChecksumTab::VerifyAudio, {text, first}), QString());
    EXPECT_TRUE(kruv.person.prompts.isEmpty());
    EXPECT_TRUE(kruv.person.alerts.empty());
}

TEST_F(ChecksumTabTest, St5ListsSayWhatTheyLeaveOut)
{
    writeWav(one + u"/good.wav"_s, {.frames = 588});
    writeWav(two + u"/other.wav"_s, {.frames = 588});
    kruv.person.textAnswers = {one + u"/l.st5"_s};
    create("ST5", true, {one + u"/good.wav"_s, first, two + u"/other.wav"_s});
    const QByteArray list = readFile(one + u"/l.st5"_s);
    EXPECT_TRUE(list.startsWith(";shntool st5 checksums generated by Kruv "));
    EXPECT_EQ(list.count("[shntool]"), 1);
    ASSERT_EQ(kruv.person.resultsWindows.size(), 1);
    const QString report = kruv.person.resultsWindows[0].text;
    EXPECT_TRUE(report.contains(u"warning: "_s)) << report.toStdString();
    EXPECT_TRUE(report.contains(u"other.wav is not in the list: it lies in another folder."_s));

    create("ST5", true, {second});
    EXPECT_TRUE(listsIn(two).isEmpty()) << "no list rather than an empty one";
}

} // namespace
