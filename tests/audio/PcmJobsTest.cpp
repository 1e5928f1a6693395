// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Audio.h"
#include "support/QtPrinters.h"
#include "support/Session.h"
#include "support/TaggedAudio.h"
#include "tabs/DecodeTab.h"
#include "tags/AACTagsHelper.h"
#include "tags/TagLibTagsHelper.h"
#include "tags/TagsObject.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

void makeMp4(const QString &wav, const QString &output, const QString &codec)
{
    toolOutput(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, wav, u"-c:a"_s, codec, output});
}

} // namespace

TEST(PcmJobs, DecodeConvertAndKeepWhatWouldBeLost)
{
    Session session;
    DecodeTab &tab = session.controller.decodeTab();
    const auto music = [&session](const QString &name) { return session.music + u'/' + name; };
    const auto decode = [&](const QStringList &files, const QString &format) {
        tab.outputFormatMatrix().selectId(format.toLower());
        tab.addFiles(files);
        session.ended.clear();
        tab.executeCommand();
        EXPECT_TRUE(session.runToEnd());
    };
    session.preferences.setValue(u"warnOnDelete"_s, false);
    tab.sourceDecodeButton().setOn(true);
    tab.deleteOriginalsButton().setOn(true);
    const Audio audio = makeAudio({.bitsPerSample = 24, .frames = 9000});
    writeFile(music(u"a.wav"_s), wavBytes(audio));
    makeMp4(music(u"a.wav"_s), music(u"a.m4a"_s), u"alac"_s);
    const auto record = fullRecord();
    ASSERT_TRUE(AACTagsHelper().writeTagsForFile(music(u"a.m4a"_s), *record, false, false));

    session.person.buttonAnswers = {1};
    decode({music(u"a.wav"_s)}, u"WAV"_s);
    EXPECT_EQ(readFile(music(u"a.wav"_s)), wavBytes(audio)) << "a file that takes its own place stays";

    decode({music(u"a.m4a"_s)}, u"AIFF"_s);
    ASSERT_EQ(session.ended.size(), 1U);
    EXPECT_FALSE(session.ended[0].error) << session.ended[0].text.toStdString();
    EXPECT_FALSE(QFile::exists(music(u"a.m4a"_s)));
    EXPECT_TRUE(readAiff(music(u"a.aiff"_s)) == audio);
    EXPECT_EQ(TagLibTagsHelper().tagsForAIFFFile(music(u"a.aiff"_s))->text(TagField::Title),
              record->text(TagField::Title));

    QFile::remove(music(u"a.wav"_s));
    session.person.buttonAnswers = {1}; // that its tags are lost
    decode({music(u"a.aiff"_s)}, u"WAV"_s);
    EXPECT_EQ(readFile(music(u"a.wav"_s)), wavBytes(audio));
    EXPECT_FALSE(QFile::exists(music(u"a.aiff"_s)));
}

TEST(PcmJobs, IntakeLooksIntoTheFile)
{
    Session session;
    const auto music = [&session](const QString &name) { return session.music + u'/' + name; };
    writeWav(music(u"wav.raw"_s), {.frames = 100});
    writeFile(music(u"text.raw"_s), "RIFF");
    makeMp4(music(u"wav.raw"_s), music(u"alac.M4A"_s), u"alac"_s);
    makeMp4(music(u"wav.raw"_s), music(u"aac.m4a"_s), u"aac"_s);
    struct
    {
        const char *tab;
        const char *taken;
    } const rows[] = {
        {"encode", "wav.raw alac.M4A aac.m4a"}, // asked about before they are made lossless
        {"lossy", "wav.raw alac.M4A"},
        {"decode", "wav.raw alac.M4A aac.m4a"},
        {"Tags", "alac.M4A aac.m4a"},
    };
    for (const auto &[tab, taken] : rows) {
        QStringList given;
        for (const QString &name : {u"wav.raw"_s, u"text.raw"_s, u"alac.M4A"_s, u"aac.m4a"_s}) {
            if (session.controller.isValidFile(QString::fromLatin1(tab), music(name))) {
                given << name;
            }
        }
        EXPECT_EQ(given.join(u' '), QString::fromLatin1(taken)) << tab;
    }
}

} // namespace kruv::test
