// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/LossyTab.h"

#include "support/Audio.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "support/Session.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

struct LossyTabTest : testing::Test
{
    Session session;
    LossyTab &tab = session.controller.lossyTab();
    ScriptedUserInterface &person = session.person;

    /// Names of the controls that are shown; those that are hidden must be disabled.
    QString shown()
    {
        const std::pair<const char *, Control *> controls[] = {
            {"mp3", &tab.mp3Matrix()},           {"aac", &tab.aacMatrix()}, {"opus", &tab.opusMatrix()},
            {"rate", &tab.comboBox()},           {"slider", &tab.slider()}, {"stepper", &tab.stepper()},
            {"frame", &tab.opusFrameSizeCombo()}};
        QStringList names;
        for (const auto &[name, control] : controls) {
            EXPECT_EQ(control->isHidden(), !control->isEnabled()) << name;
            if (!control->isHidden()) {
                names.append(QString::fromLatin1(name));
            }
        }
        return names.join(u' ');
    }
};

} // namespace

TEST_F(LossyTabTest, ShowsWhatBelongsToFormatAndMode)
{
    EXPECT_EQ(tab.opusFrameSizeLevel(), 20.0);
    const std::pair<ChoiceControl &, QStringList> rows[] = {
        // by format, then by mode
        {tab.mp3Matrix(), {u"mp3 rate"_s, u"mp3 rate"_s, u"mp3 slider"_s}},
        {tab.aacMatrix(), {u"aac rate"_s, u"aac rate"_s, u"aac rate"_s, u"aac stepper"_s}},
        {tab.aacMatrix(), {u"rate"_s, u"rate"_s, u"rate"_s, u"rate"_s}},
        {tab.opusMatrix(), {u"opus rate frame"_s, u"opus rate frame"_s, u"opus rate frame"_s}}};
    for (int format = 0; format < 4; ++format) {
        tab.outputFormatMatrix().select(format);
        for (int mode = 0; mode < rows[format].second.size(); ++mode) {
            rows[format].first.select(mode);
            EXPECT_EQ(shown(), rows[format].second[mode]) << format << " " << mode;
        }
        EXPECT_EQ(tab.comboBox().items().first(), format == 2 ? u"24"_s : u"96"_s);
    }
}

TEST_F(LossyTabTest, CorrectsBitRatesAndRemembersValues)
{
    const struct
    {
        QString typed;
        int format;
        QString becomes;
    } rows[] = {{u"48"_s, 0, u"256"_s}, {u"320"_s, 2, u"60"_s}, {u"61"_s, 2, u"60"_s},
                {u"60"_s, 2, u"60"_s},  {u"79"_s, 3, u"256"_s}, {u"80"_s, 3, u"80"_s},
                {u""_s, 2, u"60"_s},    {u"400"_s, 1, u"256"_s}};
    for (const auto &row : rows) {
        tab.outputFormatMatrix().select(row.format == 1 ? 0 : 1);
        tab.comboBox().setText(row.typed);
        tab.outputFormatMatrix().select(row.format);
        EXPECT_EQ(tab.comboBox().text(), row.becomes) << row.format;
    }
    for (const auto &[typed, becomes] :
         {std::pair{u"127"_s, u"127"_s}, {u"128"_s, u"127"_s}, {u"5x"_s, u"127"_s}, {u"0"_s, u"0"_s}}) {
        tab.stepperTextField().setText(typed);
        EXPECT_EQ(tab.stepperTextField().text(), becomes);
        EXPECT_EQ(tab.stepperLevel(), becomes.toInt());
    }
    tab.slider().setValue(9);
    tab.opusFrameSizeCombo().select(0);
    tab.outputFormatMatrix().select(2);
    tab.comboBox().setText(u"32"_s);
    KruvController again(session.preferences, person, nullptr);
    LossyTab &next = again.lossyTab();
    EXPECT_EQ(next.outputFormatMatrix().selectedId(), u"he-aac"_s);
    EXPECT_EQ(next.comboLevel(), 32);
    EXPECT_EQ(next.sliderLevel(), 9);
    EXPECT_EQ(next.stepperTextField().text(), u"0"_s);
    EXPECT_EQ(next.opusFrameSizeLevel(), 2.5);
}

TEST_F(LossyTabTest, ReplacesNothingUnasked)
{
    const QString source = session.folder.write(u"music/a.wav"_s, "x");
    for (int format = 0; format < 4; ++format) {
        tab.outputFormatMatrix().select(format);
        const QString there =
            session.folder.write(u"music/a."_s + tab.formats()[format]->extension(), "kept");
        constexpr int cancel = 3;
        tab.addFiles({source});
        tab.sourceEncodeButton().setOn(true);
        person.buttonAnswers = {cancel};
        tab.executeCommand();
        EXPECT_EQ(person.questions.back().buttons,
                  (QStringList{u"Skip existing"_s, u"Replace"_s, u"Keep both"_s, u"Cancel"_s}));
        EXPECT_EQ(tab.fileList().count(), 1);
        person.buttonAnswers = {1};
        session.ended.clear();
        tab.executeCommand();
        EXPECT_TRUE(session.runToEnd());
        EXPECT_TRUE(tab.fileList().isEmpty());
        EXPECT_TRUE(session.ended.at(0).error) << "a WAV file that is none";
        EXPECT_EQ(readFile(there), "kept");
    }
}

// The tools print their arguments, which become the jobs' results.
TEST_F(LossyTabTest, BuildsJobsOfWhatWasChosen)
{
    const QString resources = session.folder.makeFolder(u"resources"_s);
    QFile::link(u"/bin/echo"_s, resources + u"/lame"_s);
    QFile::link(u"/bin/echo"_s, resources + u"/opusenc"_s);
    const EnvironmentVariable variable("KRUV_RESOURCES", resources.toUtf8());
    session.preferences.setValue(u"lameStereoOption"_s, 0);
    session.preferences.setValue(u"lameQValue"_s, 2);
    const QString wav = session.music + u"/a.wav"_s;
    writeWav(wav, {.frames = 100});
    tab.sourceEncodeButton().setOn(true);
    tab.slider().setValue(7);
    tab.mp3Matrix().select(2);
    tab.opusFrameSizeCombo().select(5);
    tab.comboBox().setText(u"128"_s);
    for (const int format : {0, 3}) {
        tab.outputFormatMatrix().select(format);
        tab.addFiles({wav});
        tab.executeCommand();
        EXPECT_TRUE(session.runToEnd());
    }
    const auto said = [this](std::size_t job) {
        static const QRegularExpression staging(u"/\\.kruv-[a-z]{8}"_s);
        return session.ended.at(job).text.remove(session.music).remove(staging);
    };
    EXPECT_TRUE(said(0).contains(u"--brief -m s -q 2 -V 7 /a.wav /a.mp3\n"_s));
    EXPECT_TRUE(said(1).contains(u"--hard-cbr --bitrate 128 --framesize 60 /a.wav /a.opus\n"_s));
    EXPECT_TRUE(session.ended.at(0).error && session.ended.at(1).error) << "nothing was written";

    KruvController other(session.preferences, person, nullptr);
    other.lossyTab().outputFormatMatrix().selectId(u"he-aac"_s);
    EXPECT_TRUE(other.lossyTab().missingToolText().text().contains(u"apt-get install libfdk-aac-dev"));
}

} // namespace kruv::test
