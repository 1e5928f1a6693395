// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/CreateST5Task.h"
#include "checksums/TabRun.h"
#include "support/Audio.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

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
        ASSERT_TRUE(kruv.tab.createChecksumOptions().selectTitle(QString::fromLatin1(kind)));
        kruv.tab.sourceSaveButton().setOn(besideSource);
        kruv.run(ChecksumTab::CreateList, files);
    }
    QStringList listsIn(const QString &folder) const
    {
        return QDir(folder).entryList(
            {QStringLiteral("*.md5"), QStringLiteral("*.st5"), QStringLiteral("*ffp*")}, QDir::Files);
    }

    TabRun kruv;
    QString one = kruv.folder.makeFolder(QStringLiteral("one"));
    QString two = kruv.folder.makeFolder(QStringLiteral("two"));
    QString first = kruv.folder.write(QStringLiteral("one/a.Wav"), "a");
    QString second = kruv.folder.write(QStringLiteral("two/b.wav"), "b");
};

TEST_F(ChecksumTabTest, ShowsTheOptionsOfAListOnlyWhereOneIsMade)
{
    for (const auto row : {ChecksumTab::VerifyAudio, ChecksumTab::CreateList, ChecksumTab::VerifyLists}) {
        kruv.tab.commandOptions().select(row);
        const bool shown = row == ChecksumTab::CreateList;
        EXPECT_EQ(kruv.tab.createChecksumOptions().isEnabled(), shown);
        EXPECT_EQ(kruv.tab.createChecksumOptions().isHidden(), !shown);
        EXPECT_EQ(kruv.tab.sourceSaveButton().isEnabled(), shown);
        EXPECT_EQ(kruv.tab.sourceSaveButton().isHidden(), !shown);
    }
}

TEST_F(ChecksumTabTest, ListsBesideTheirSourcesAskNothing)
{
    create("MD5", true, {first});
    EXPECT_EQ(listsIn(one), QStringList(QStringLiteral("md5sum.md5")));
    kruv.preferences.setValue(QStringLiteral("checksumFileUsesOutputDirName"), true);
    create("MD5", true, {first});
    EXPECT_TRUE(QFile::exists(one + QStringLiteral("/one.md5")));
    EXPECT_TRUE(kruv.person.prompts.isEmpty());
    EXPECT_TRUE(kruv.tab.fileList().isEmpty());
}

TEST_F(ChecksumTabTest, AsksForAPlaceWithTheTitlesOfEachKind)
{
    const QString flac = kruv.folder.file(QStringLiteral("one/c.flac"));
    writeFile(flac, "not really");
    const QString asked = kruv.folder.file(QStringLiteral("asked"));
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
        flacFiles << folder + QStringLiteral("/x.flac");
        writeWav(folder + QStringLiteral("/x.wav"), {.frames = 100});
        outputOf(QStringLiteral("flac"), {QStringLiteral("-s"), QStringLiteral("x.wav")}, folder);
    }
    create("FFP", true, flacFiles + QStringList{first});
    const QByteArray list = readFile(one + QStringLiteral("/fingerprint.ffp.txt"));
    EXPECT_EQ(list.count("x.flac:"), 2);
    EXPECT_FALSE(list.contains("a.Wav"));
    EXPECT_TRUE(listsIn(two).isEmpty());
    EXPECT_TRUE(kruv.person.alerts.empty());

    QFile::remove(flacFiles[1]);
    create("FFP", true, flacFiles);
    ASSERT_EQ(kruv.person.alerts.size(), 1) << "an incomplete list is never made in silence";
    EXPECT_TRUE(kruv.person.alerts[0].text.contains(QStringLiteral("FLAC__METADATA_CHAIN")));
}

TEST_F(ChecksumTabTest, KnowsListsByTheirNames)
{
    const char *lists[] = {"a.MD5", "b.st5", "c.Ffp", "d.fFp.TXT", "e.txt", "f.md5.txt", "g.wav"};
    QStringList files;
    for (const char *name : lists) {
        files << kruv.folder.write(QString::fromLatin1(name), "");
    }
    EXPECT_EQ(
        kruv.run(ChecksumTab::VerifyLists, files),
        QStringLiteral(
            "Verify MD5: a.MD5\n\nVerify ST5: b.st5\n\nVerify FFP: c.Ffp\n\nVerify FFP: d.fFp.TXT\n\n"));
    EXPECT_EQ(kruv.person.resultsWindows.size(), 1) << "one report for the whole command";
    EXPECT_TRUE(kruv.tab.fileList().isEmpty());
}

TEST_F(ChecksumTabTest, DoesNothingWithoutFilesOfItsKind)
{
    const QString text = kruv.folder.write(QStringLiteral("notes.txt"), "");
    for (const char *kind : {"MD5", "ST5", "FFP"}) {
        create(kind, false, {text});
        EXPECT_TRUE(kruv.tab.fileList().isEmpty());
    }
    EXPECT_EQ(kruv.run(ChecksumTab::VerifyAudio, {text, first}), QString());
    EXPECT_TRUE(kruv.person.prompts.isEmpty());
    EXPECT_TRUE(kruv.person.alerts.empty());
}

TEST_F(ChecksumTabTest, BuildsItsToolsCommandLines)
{
    const auto results = std::make_shared<KruvTaskResults>();
    const auto line = [](const std::shared_ptr<KruvTask> &job) {
        const auto &tool = dynamic_cast<const KruvAsyncNSTask &>(*job);
        return (QStringList{tool.launchPath().section(u'/', -1)} + tool.arguments()).join(u'|');
    };
    const QString file = QStringLiteral("/m/a b.x");
    EXPECT_EQ(line(kruv.tab.verifyFlac(file, results)), QStringLiteral("flac|-t|/m/a b.x"));
    EXPECT_EQ(line(kruv.tab.verifyAPE(file, results)), QStringLiteral("mac|-v|/m/a b.x"));
    EXPECT_EQ(line(kruv.tab.verifyWavepack(file, results)), QStringLiteral("wvunpack|-v|/m/a b.x"));
    EXPECT_EQ(line(kruv.tab.verifyTTA(file, results)), QStringLiteral("ttaenc|-t|/m/a b.x"));
    EXPECT_EQ(line(kruv.tab.createST5({QStringLiteral("/m/2.wav"), QStringLiteral("/m/-1.wav")}, true)),
              QStringLiteral("shntool|hash|-m|2.wav|-1.wav"));
    EXPECT_EQ(kruv.tab.verifyFlac(file, results)->title(), QStringLiteral("Verify FLAC"));
    EXPECT_EQ(kruv.tab.createST5({file}, true)->title(), QStringLiteral("Create ST5"));
    EXPECT_EQ(kruv.tab.createMD5({file}, true)->title(), QStringLiteral("Creating MD5"));
}

TEST_F(ChecksumTabTest, St5ListsSayWhatTheyLeaveOut)
{
    writeWav(one + QStringLiteral("/good.wav"), {.frames = 588});
    writeWav(two + QStringLiteral("/other.wav"), {.frames = 588});
    kruv.person.textAnswers = {one + QStringLiteral("/l.st5")};
    create("ST5", true, {one + QStringLiteral("/good.wav"), first, two + QStringLiteral("/other.wav")});
    const QByteArray list = readFile(one + QStringLiteral("/l.st5"));
    EXPECT_TRUE(list.startsWith(";shntool st5 checksums generated by Kruv "));
    EXPECT_EQ(list.count("[shntool]"), 1);
    ASSERT_EQ(kruv.person.resultsWindows.size(), 1);
    const QString report = kruv.person.resultsWindows[0].text;
    EXPECT_TRUE(report.contains(QStringLiteral("warning: "))) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("other.wav is not in the list: it lies in another folder.")));

    create("ST5", true, {second});
    EXPECT_TRUE(listsIn(two).isEmpty()) << "no list rather than an empty one";
}

} // namespace
