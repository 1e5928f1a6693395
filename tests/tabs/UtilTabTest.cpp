// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/UtilTab.h"

#include "platform/Resources.h"
#include "support/Audio.h"
#include "support/FullDisk.h"
#include "support/QtPrinters.h"
#include "support/Session.h"
#include "support/TaggedAudio.h"
#include "tags/TagLibTagsHelper.h"
#include "util/FormatSummary.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

class Utilities : public testing::Test
{
protected:
    Utilities() { session.controller.taskQueue().setMaxThreads(1); } // jobs end in the order of the list
    QString file(const QString &name) const { return session.music + u'/' + name; }
    void run(UtilTab::Command command, const QStringList &files, const QString &answer = {})
    {
        tab.clearFiles();
        tab.commandMatrix().select(command);
        session.person.alerts.clear();
        session.person.textAnswers.clear();
        if (!answer.isNull()) {
            session.person.textAnswers = {answer};
        }
        tab.addFiles(files);
        tab.executeCommand();
        EXPECT_TRUE(session.runToEnd());
    }
    QStringList names() const { return QDir(session.music).entryList(QDir::Files); }
    QString converted(const QString &source) const
    {
        return out + u'/' + QFileInfo(source).completeBaseName() + u"-converted.wav"_s;
    }
    QString alertText() const
    {
        return session.person.alerts.size() == 1 ? session.person.alerts[0].text : u"no alert"_s;
    }

    Session session;
    UtilTab &tab = session.controller.utilTab();
    QString out = session.folder.makeFolder(u"out"_s);
};

QString metaflac(const QString &path, const QString &key)
{
    return QString::fromUtf8(toolOutput(u"metaflac"_s, {u"--show-tag="_s + key, path}))
        .trimmed()
        .section(u'=', 1);
}

} // namespace

TEST_F(Utilities, RenamesAllFilesOrNone)
{
    QStringList files;
    for (int n = 1; n <= 11; ++n) {
        files << file(u"%1 - s.%2"_s.arg(n).arg(n == 3 ? u"FLAC"_s : u"wav"_s));
        writeFile(files.last(), QByteArray::number(n));
    }
    files << file(u"12 bare"_s);
    writeFile(files.last(), "12");
    const QStringList before = names();
    const auto refuse = [&](const QString &prefix, const QString &why) {
        run(UtilTab::Rename, files, prefix);
        EXPECT_TRUE(alertText().contains(why)) << alertText().toStdString();
        EXPECT_EQ(names(), before);
        EXPECT_EQ(tab.fileList().count(), 12);
    };
    refuse(u"a/b"_s, u"can't hold \"/\""_s);
    refuse(QString(300, u'x'), u"could not be renamed"_s);

    QFile::link(u"/nowhere"_s, file(u"Disc11.wav"_s));
    run(UtilTab::Rename, files, u"Disc"_s);
    EXPECT_EQ(alertText(), u"File at \"%1\" already exists"_s.arg(file(u"Disc11.wav"_s)));
    EXPECT_EQ(names(), before);
    QFile::remove(file(u"Disc11.wav"_s));

    // The last move fails, and the eleven before it are taken back.
    const QString longName = u"9"_s + QString(251, u'9') + u".x"_s;
    writeFile(file(longName), "long");
    const auto tooLong = BatchRename::plan(files, u"Disc"_s) +
                         QList<BatchRename::Move>{{file(longName), file(QString(256, u'y'))}};
    EXPECT_THROW(BatchRename::carryOut(tooLong), BatchRename::Refused);
    QFile::remove(file(longName));
    EXPECT_EQ(names(), before);

    run(UtilTab::Rename, files, u"Disc"_s);
    EXPECT_TRUE(tab.fileList().isEmpty());
    for (int n = 1; n <= 12; ++n) {
        const QString extension = n == 3 ? u".FLAC"_s : n == 12 ? QString() : u".wav"_s;
        EXPECT_EQ(readFile(file(u"Disc%1"_s.arg(n, 2, 10, QLatin1Char('0')) + extension)),
                  QByteArray::number(n));
    }
    run(UtilTab::Rename, {file(u"Disc01.wav"_s)}, u""_s);
    EXPECT_TRUE(QFile::exists(file(u"Disc01.wav"_s)));
}

TEST_F(Utilities, AddsReplayGainWithAlbumGainAFolder)
{
    QStringList files;
    QDir(session.music).mkpath(u"one"_s);
    QDir(session.music).mkpath(u"two"_s);
    for (const char *name : {"one/1.flac", "one/2.flac", "two/1.flac"}) {
        files << file(QString::fromLatin1(name));
        const QString wav = files.last() + u".wav"_s;
        writeWav(wav, {.signal = files.size() == 2 ? Signal::Noise : Signal::Sine});
        ASSERT_EQ(QProcess::execute(u"flac"_s, {u"-s"_s, wav, u"-o"_s, files.last()}), 0);
    }
    run(UtilTab::ReplayGain, files);
    ASSERT_EQ(session.ended.size(), 2U);
    EXPECT_EQ(session.ended[0].arguments, (QStringList{u"--add-replay-gain"_s, files[0], files[1]}));
    EXPECT_EQ(metaflac(files[0], u"REPLAYGAIN_ALBUM_GAIN"_s), metaflac(files[1], u"REPLAYGAIN_ALBUM_GAIN"_s));
    EXPECT_NE(metaflac(files[0], u"REPLAYGAIN_ALBUM_GAIN"_s), metaflac(files[2], u"REPLAYGAIN_ALBUM_GAIN"_s));
    EXPECT_EQ(metaflac(files[0], u"REPLAYGAIN_TRACK_GAIN"_s), metaflac(files[2], u"REPLAYGAIN_TRACK_GAIN"_s));
    tab.replayGainMatrix().selectId(u"remove"_s);
    run(UtilTab::ReplayGain, files);
    EXPECT_EQ(metaflac(files[0], u"REPLAYGAIN_TRACK_GAIN"_s), QString());
    run(UtilTab::ReplayGain, {files[0] + u".wav"_s});
    EXPECT_EQ(alertText(), u"No Flac files in file list"_s);
}

TEST_F(Utilities, ConvertsSampleRatesAndKeepsTags)
{
    writeAiff(file(u"50%: In.aiff"_s), {.bitsPerSample = 24, .signal = Signal::Sine});
    TagLibTagsHelper().writeTagsForAIFFFile(file(u"50%: In.aiff"_s), *fullRecord());
    writeWav(file(u"whole.wav"_s));
    writeFile(file(u"short.wav"_s), readFile(file(u"whole.wav"_s)).left(100000));
    tab.sampleRateCombo().setText(u"96 kHz"_s);
    run(UtilTab::SampleRateConversion, {session.music}, out);
    ASSERT_EQ(session.ended.size(), 3U);
    EXPECT_FALSE(session.ended[0].error) << session.ended[0].text.toStdString();
    EXPECT_EQ(session.ended[0].text, u"50%: In.aiff  - Done\n\n\n"_s);
    EXPECT_TRUE(session.ended[1].error && session.ended[1].text.contains(u"less audio than its header"_s));
    EXPECT_FALSE(QFile::exists(out + u"/short-converted.wav"_s)) << "it looks whole";
    const QString converted = out + u"/50%: In-converted.aiff"_s;
    const auto format = formatSummary(converted);
    EXPECT_EQ(format.sampleRate, 96000);
    EXPECT_EQ(format.bitsPerChannel, 24);
    EXPECT_EQ(format.totalSamples, 96000);
    EXPECT_EQ(probedTags(converted), probedTags(file(u"50%: In.aiff"_s)));

    run(UtilTab::DeEmphasis, {file(u"whole.wav"_s)}, out);
    EXPECT_EQ(readWav(out + u"/whole-deemph.wav"_s).frames(), 44100U);
    session.person.buttonAnswers = {0};
    run(UtilTab::DeEmphasis, {file(u"whole.wav"_s)}, out);
    EXPECT_EQ(session.ended.size(), 4U) << "overwritten against the person's word";
    QFile::remove(out + u"/whole-deemph.wav"_s);
    QFile::link(file(u"whole.wav"_s), out + u"/whole-deemph.wav"_s);
    const QByteArray source = readFile(file(u"whole.wav"_s));
    session.person.buttonAnswers = {1};
    run(UtilTab::DeEmphasis, {file(u"whole.wav"_s)}, out);
    EXPECT_FALSE(session.ended.at(4).error);
    EXPECT_EQ(readWav(out + u"/whole-deemph.wav"_s).frames(), 44100U) << "in the link's place";
    EXPECT_EQ(readFile(file(u"whole.wav"_s)), source);
    tab.sampleRateCombo().setText(u"44100 kHz"_s);
    run(UtilTab::SampleRateConversion, {file(u"whole.wav"_s)}, out);
    EXPECT_EQ(alertText(), u"\"44100 kHz\" is no sample rate"_s);
    run(UtilTab::DeEmphasis, {file(u"none.flac"_s)}, out);
    EXPECT_EQ(alertText(), u"No Wav/Aiff files in file list"_s);
}

TEST_F(Utilities, SoxTakesNamesForWhatTheyAreAndLosesNoEarlierOutput)
{
    QStringList files;
    for (const char16_t *name : {u"Live [1].wav", u"Live 1.wav", u"Live {1,2}.wav", u"|touch ran.wav",
                                 u"-n.wav", u"~root.wav", u"100%1 *.wav"}) {
        files << file(QStringView(name).toString());
        writeWav(files.last(), {.seed = static_cast<std::uint32_t>(files.size())});
        writeFile(converted(files.last()), "the last one");
    }
    tab.sampleRateCombo().setText(u"44.1 kHz"_s); // what they have: nothing changes but the place
    session.person.buttonAnswers = {1, 1};
    {
        const FullDisk full(100'000);
        run(UtilTab::SampleRateConversion, files, out);
    }
    ASSERT_EQ(session.ended.size(), std::size_t(files.size()));
    for (qsizetype index = 0; index < files.size(); ++index) {
        const Ended &job = session.ended[std::size_t(index)];
        EXPECT_TRUE(job.error && !job.text.contains(u"Done"_s)) << job.text.toStdString();
        EXPECT_EQ(readFile(converted(files[index])), "the last one");
    }
    run(UtilTab::SampleRateConversion, files, out);
    for (const QString &each : files) {
        EXPECT_EQ(readWav(converted(each)), readWav(each)) << each.toStdString();
    }
    EXPECT_EQ(QDir(out).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
              files.size());
}

TEST_F(Utilities, MakesDvdAudioImagesOfOneFormatOnly)
{
    writeWav(file(u"1.wav"_s));
    writeAiff(file(u"2.aiff"_s), {.seed = 2});
    writeWav(file(u"3.wav"_s), {.sampleRate = 48000});
    session.person.buttonAnswers = {1, 0};
    tab.commandMatrix().select(UtilTab::ReplayGain);
    tab.commandMatrix().select(UtilTab::DvdAudio);
    EXPECT_EQ(tab.commandMatrix().selectedIndex(), UtilTab::ReplayGain);
    EXPECT_EQ(
        session.person.questions.at(0).title,
        u"You have chosen \"DVD Audio Disc.\" This will scan the files in the list for format information. "
        "Are you sure you want to continue?"_s);

    run(UtilTab::DvdAudio, {session.music});
    ASSERT_FALSE(session.person.alerts.empty());
    EXPECT_EQ(session.person.alerts[0].title,
              u"The Files in the list must match in sample rate, bit depth and number of channels."_s);
    EXPECT_EQ(tab.tableModel().data(tab.tableModel().index(2, 2), Qt::DisplayRole).toString(), u"48 kHz"_s);

    run(UtilTab::DvdAudio, {file(u"1.wav"_s), file(u"2.aiff"_s)}, out);
    EXPECT_EQ(tab.dvdAudioDiscTime().text(), u"0:02"_s);
    ASSERT_EQ(session.ended.size(), 1U);
    EXPECT_FALSE(session.ended[0].error) << session.ended[0].text.toStdString();
    EXPECT_EQ(QDir(out).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              (QStringList{u"image.iso"_s, u"log.txt"_s}));
    EXPECT_GT(QFile(out + u"/image.iso"_s).size(), 2 * 44100 * 4);

    // A run that fails takes nothing away and leaves nothing in the way of the next.
    const QByteArray image = readFile(out + u"/image.iso"_s);
    QDir(out).mkpath(u"DVD-AUDIO"_s);
    writeFile(out + u"/DVD-AUDIO/precious"_s, "a person's own");
    for (const bool isFull : {true, false}) {
        session.person.buttonAnswers = {1};
        std::optional<FullDisk> full;
        if (isFull) {
            full.emplace(100'000);
        }
        run(UtilTab::DvdAudio, {file(u"1.wav"_s)}, out);
        full.reset();
        EXPECT_EQ(session.ended.back().error, isFull) << session.ended.back().text.toStdString();
        EXPECT_EQ(readFile(out + u"/image.iso"_s) == image, isFull);
        EXPECT_EQ(QDir(out).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                  (QStringList{u"DVD-AUDIO"_s, u"image.iso"_s, u"log.txt"_s}));
    }
    EXPECT_EQ(readFile(out + u"/DVD-AUDIO/precious"_s), "a person's own");
}

} // namespace kruv::test
