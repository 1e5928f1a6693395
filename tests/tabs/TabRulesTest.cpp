// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/QtPrinters.h"
#include "support/Session.h"
#include "tabs/ChecksumTab.h"
#include "tabs/DecodeTab.h"
#include "tabs/EncodeTab.h"
#include "tabs/OutputPlan.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

const QString deleteQuestion =
    u"You have chosen to delete the original files.  Are you sure you want to continue?"_s;
const QString clashMessage = u"Two of the files would give the same output"_s;

/// A session whose flac is a program that succeeds without doing anything.
class TabRules : public testing::Test
{
protected:
    void SetUp() override
    {
        const QString resources = session.folder.makeFolder(u"resources"_s);
        for (const QString &tool : {u"/flac"_s, u"/metaflac"_s}) {
            ASSERT_TRUE(QFile::link(u"/bin/true"_s, resources + tool));
        }
        m_before = qgetenv("KRUV_RESOURCES");
        qputenv("KRUV_RESOURCES", resources.toUtf8());
        application = std::make_unique<KruvController>(session.preferences, session.person, nullptr);
        QObject::connect(&application->taskQueue(), &KruvTaskQueue::taskStarted,
                         [this](KruvTask &task) { started << task.title(); });
    }
    void TearDown() override
    {
        EXPECT_TRUE(waitUntil([this] { return application->taskQueue().taskCount() == 0; }));
        drainPool();
        qputenv("KRUV_RESOURCES", m_before);
    }
    QString file(const QString &name, const QByteArray &bytes = "x")
    {
        return session.folder.write(u"music/"_s + name, bytes);
    }
    /// What the command started, a line a job: all of it, once everything has ended.
    QStringList jobs()
    {
        for (int round = 0; round < 2; ++round) { // the second for follow-up jobs
            EXPECT_TRUE(waitUntil([this] { return application->taskQueue().taskCount() == 0; }));
            drainPool();
            serveEvents();
        }
        return std::exchange(started, {});
    }

    Session session;
    std::unique_ptr<KruvController> application;
    QStringList started;
    ScriptedUserInterface &person = session.person;

private:
    QByteArray m_before;
};

} // namespace

TEST(OutputPlan, KnowsNamesThatOneVolumeTakesForOne)
{
    const auto folds = [](const QString &folder, const QString &, const QString &) {
        return folder == u"/fat";
    };
    struct Case
    {
        QStringList sources;
        QString folder;
        bool collides;
    };
    for (const Case &each : {Case{{u"/d1/Track01.wav"_s, u"/d2/tRACK01.wav"_s}, u"/fat"_s, true},
                             Case{{u"/d1/Track01.wav"_s, u"/d2/tRACK01.wav"_s}, u"/plain"_s, false},
                             Case{{u"/d1/Track01.wav"_s, u"/d2/Track01.aiff"_s}, u"/plain"_s, true},
                             Case{{u"/d1/Caf\u00e9.wav"_s, u"/d2/CAFE\u0301.wav"_s}, u"/fat"_s, true},
                             Case{{u"/fat/a.wav"_s, u"/plain/A.wav"_s}, {}, false},
                             Case{{u"/d1/a.wav"_s, u"/d2/\u00e4.wav"_s}, u"/fat"_s, false}}) {
        EXPECT_EQ(OutputPlan(each.sources, {.folder = each.folder}, u"flac"_s).collision(folds).has_value(),
                  each.collides)
            << each.sources.join(u' ').toStdString() << " in " << each.folder.toStdString();
    }
}

TEST_F(TabRules, AnEmptyListDoesNothing)
{
    application->encodeTab().executeCommand();
    application->decodeTab().executeCommand();
    application->checksumTab().executeCommand();
    EXPECT_EQ(jobs(), QStringList());
}

TEST_F(TabRules, TheDeleteQuestionComesFirstAndNoKeepsTheList)
{
    EncodeTab &tab = application->encodeTab();
    tab.addFiles({file(u"a.wav"_s)});
    tab.deleteOriginalsButton().setOn(true);
    person.buttonAnswers = {1};
    tab.executeCommand();
    EXPECT_EQ(person.questions, (std::vector<ScriptedUserInterface::Question>{
                                    {deleteQuestion, QString(), {u"Yes"_s, u"No"_s}, 0}}));
    EXPECT_TRUE(person.prompts.isEmpty());
    EXPECT_EQ(tab.fileList().count(), 1);

    DecodeTab &other = application->decodeTab();
    other.addFiles({file(u"b.flac"_s)});
    other.deleteOriginalsButton().setOn(true);
    person.buttonAnswers = {0};
    person.textAnswers = {std::nullopt};
    other.executeCommand();
    EXPECT_EQ(person.questions.size(), 2U);
    EXPECT_EQ(person.prompts, QStringList{u"Choose output directory"_s});
    EXPECT_EQ(other.fileList().count(), 1) << "a cancelled folder choice must keep the list";
    EXPECT_EQ(jobs(), QStringList());
}

TEST_F(TabRules, NoQuestionWhereThePersonDoesNotWantOne)
{
    session.preferences.setValue(u"warnOnDelete"_s, false);
    EncodeTab &tab = application->encodeTab();
    const QString source = file(u"a.wav"_s);
    tab.addFiles({source});
    tab.deleteOriginalsButton().setOn(true);
    tab.sourceEncodeButton().setOn(true);
    tab.executeCommand();
    EXPECT_TRUE(tab.fileList().isEmpty());
    EXPECT_EQ(jobs().size(), 1);
    EXPECT_TRUE(person.questions.empty());
    // The tool reported success, but wrote nothing.
    EXPECT_TRUE(QFile::exists(source));
}

TEST_F(TabRules, AnEncodeBuildsAJobAFileInListOrder)
{
    EncodeTab &tab = application->encodeTab();
    tab.addFiles(
        {file(u"10.wav"_s), file(u"2.AIF"_s), file(u"x.shn"_s), file(u"-y.flac"_s), file(u"z.tta"_s)});
    tab.flacSlider().setValue(8);
    tab.flacVerifyButton().setOn(true);
    tab.flacKeepForeignMetadataButton().setOn(true);
    person.textAnswers = {session.folder.makeFolder(u"out"_s)};
    tab.executeCommand();
    EXPECT_TRUE(tab.fileList().isEmpty());
    EXPECT_EQ(jobs(), (QStringList{u"-y.flac"_s, u"2.AIF"_s, u"10.wav"_s, u"x.shn"_s, u"z.tta"_s}));
    EXPECT_TRUE(person.alerts.empty());
}

TEST_F(TabRules, ADecodeBuildsAJobAFile)
{
    DecodeTab &tab = application->decodeTab();
    tab.addFiles({file(u"b.flac"_s), file(u"c.OPUS"_s)});
    tab.decodeFlacThroughErrors().setOn(true);
    tab.sourceDecodeButton().setOn(true);
    ASSERT_TRUE(tab.outputFormatMatrix().selectId(u"aiff"_s));
    tab.executeCommand();
    EXPECT_EQ(jobs(), (QStringList{u"b.flac"_s, u"c.OPUS"_s}));
    EXPECT_EQ(person.alerts.size(), 0U);
    EXPECT_TRUE(tab.fileList().isEmpty());
}

TEST_F(TabRules, ExistingFlacOutputsAreAskedAboutOnce)
{
    EncodeTab &tab = application->encodeTab();
    tab.addFiles({file(u"a.wav"_s), file(u"b.wav"_s)});
    tab.sourceEncodeButton().setOn(true);
    constexpr int cancel = 3;
    file(u"a.flac"_s);
    person.buttonAnswers = {cancel};
    tab.executeCommand();
    EXPECT_EQ(std::exchange(person.questions, {}).back().title, u"1 of 2 outputs exist already"_s);
    file(u"b.flac"_s);
    constexpr int skip = 0;
    constexpr int replace = 1;
    constexpr int keepBoth = 2;
    person.buttonAnswers = {cancel};
    tab.executeCommand();
    EXPECT_EQ(person.questions.back(), (ScriptedUserInterface::Question{
                                           u"All 2 outputs exist already"_s,
                                           session.music + u"/a.flac\n"_s + session.music + u"/b.flac"_s,
                                           {u"Skip existing"_s, u"Replace"_s, u"Keep both"_s, u"Cancel"_s},
                                           skip}));
    EXPECT_EQ(tab.fileList().count(), 2);
    EXPECT_EQ(jobs(), QStringList());
    for (const auto &[answer, count] : {std::pair{skip, 0}, {replace, 2}, {keepBoth, 2}}) {
        tab.addFiles({file(u"a.wav"_s), file(u"b.wav"_s)});
        person.buttonAnswers = {answer};
        tab.executeCommand();
        EXPECT_EQ(jobs().size(), count) << answer;
        EXPECT_TRUE(tab.fileList().isEmpty());
    }
    EXPECT_EQ(person.questions.size(), 4U) << "asked once a command however many clash";
}

TEST_F(TabRules, AListAfterTheSetFollowsTheAnswerForTheOutputs)
{
    EncodeTab &tab = application->encodeTab();
    application->preferences().setValue(u"ffpExtension"_s, u"ffp.txt"_s);
    tab.generateFFPButton().setOn(true);
    tab.sourceEncodeButton().setOn(true);
    const QString list = file(u"fingerprint.ffp.txt"_s, "old");
    QStringList written;
    QObject::connect(&application->taskQueue(), &KruvTaskQueue::taskStarted,
                     [&](KruvTask &task) { written << task.outputPath().section(u'/', -1); });
    for (const auto &[answer, wanted] : {std::pair{0, QString()},
                                         {1, u"fingerprint.ffp.txt"_s},
                                         {2, u"fingerprint (2).ffp.txt"_s},
                                         {3, QString()}}) {
        tab.addFiles({file(u"a.wav"_s)});
        person.buttonAnswers = {answer};
        tab.executeCommand();
        EXPECT_EQ(person.questions.back().text, list) << "before anything starts";
        jobs();
        EXPECT_EQ(std::exchange(written, {}).filter(u"ffp"_s).value(0), wanted) << answer;
        EXPECT_EQ(readFile(list), "old") << "no fingerprint was told for the new one";
    }
}

TEST_F(TabRules, TwoSourcesOfOneOutputAreRefused)
{
    session.folder.makeFolder(u"music/one"_s);
    ASSERT_TRUE(QFile::link(session.music + u"/one"_s, session.music + u"/linked"_s));
    const QString wav = file(u"one/a.wav"_s);
    const QString aiff = file(u"one/a.aiff"_s);
    EncodeTab &tab = application->encodeTab();
    tab.sourceEncodeButton().setOn(true);
    for (const QStringList &sources :
         {QStringList{wav, aiff}, QStringList{wav, session.music + u"/linked/a.aiff"_s}}) {
        person.alerts.clear();
        tab.clearFiles();
        tab.addFiles(sources);
        tab.executeCommand();
        ASSERT_EQ(person.alerts.size(), 1U);
        EXPECT_EQ(person.alerts[0].title, clashMessage);
        EXPECT_TRUE(person.alerts[0].text.contains(sources[0]) && person.alerts[0].text.contains(sources[1]));
        EXPECT_EQ(tab.fileList().count(), 2);
    }
    DecodeTab &other = application->decodeTab();
    other.addFiles({file(u"c.flac"_s), session.folder.write(u"music/one/c.flac"_s, "x")});
    person.textAnswers = {session.folder.makeFolder(u"out"_s)};
    other.executeCommand();
    EXPECT_EQ(person.alerts.back().title, clashMessage);
    EXPECT_EQ(other.fileList().count(), 2);
    EXPECT_EQ(jobs(), QStringList());
    EXPECT_TRUE(EncodeTab::isFileClash({u"/a"_s, u"/b"_s}, {u"/c"_s, u"/b"_s}));
    EXPECT_FALSE(EncodeTab::isFileClash({u"/a"_s}, {u"/A"_s}));
}

TEST_F(TabRules, OneFingerprintJobFollowsTheSet)
{
    EncodeTab &tab = application->encodeTab();
    tab.addFiles({file(u"a.wav"_s), file(u"b.wav"_s), file(u"c.wav"_s)});
    tab.generateFFPButton().setOn(true);
    tab.sourceEncodeButton().setOn(true);
    tab.executeCommand();
    const QStringList lines = jobs();
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines.last(), u"Create FFP checksum file"_s);
    EXPECT_TRUE(QFile::exists(session.music + u"/fingerprint.ffp.txt"_s));
}

TEST_F(TabRules, OptionsFollowTheFormatAndTheList)
{
    EncodeTab &tab = application->encodeTab();
    EXPECT_EQ(tab.outputFormatMatrix().selectedId(), u"flac"_s);
    EXPECT_FALSE(tab.outputFormatMatrix().selectId(u"mp3"_s));
    struct Row
    {
        Control &control;
        QString format;
    };
    for (const Row &row :
         {Row{tab.flacVerifyButton(), u"flac"_s}, Row{tab.flacLaxButton(), u"flac"_s},
          Row{tab.flacSlider(), u"flac"_s}, Row{tab.flacKeepForeignMetadataButton(), u"flac"_s},
          Row{tab.generateFFPButton(), u"flac"_s}, Row{tab.generateMD5Button(), u"shn"_s},
          Row{tab.apeSlider(), u"ape"_s}, Row{tab.wavepackFormatMatrix(), u"wv"_s}}) {
        for (const QString &format : tab.outputFormatMatrix().ids()) {
            ASSERT_TRUE(tab.outputFormatMatrix().selectId(format));
            EXPECT_EQ(row.control.isEnabled(), row.format == format) << format.toStdString();
        }
    }
    tab.outputFormatMatrix().selectId(u"flac"_s);
    tab.flacVerifyButton().setOn(true);
    EXPECT_EQ(session.preferences.integer(u"flacVerifyButton"_s), 1);

    DecodeTab &other = application->decodeTab();
    const auto shown = [&other] {
        return !other.flacOptionsLabel().isHidden() && !other.decodeFlacThroughErrors().isHidden() &&
               !other.flacKeepForeignMetadataButton().isHidden();
    };
    EXPECT_FALSE(shown());
    other.addFiles({file(u"a.wav"_s)});
    EXPECT_FALSE(shown());
    other.addFiles({file(u"a.Flac"_s)});
    EXPECT_TRUE(shown());
    other.clearButtonClick();
    EXPECT_FALSE(shown());
}

TEST_F(TabRules, NoFormatMakesNoJob)
{
    EncodeTab &tab = application->encodeTab();
    tab.addFiles({file(u"a.wav"_s)});
    tab.outputFormatMatrix().select(-1);
    tab.executeCommand();
    EXPECT_EQ(jobs(), QStringList());
}

} // namespace kruv::test
