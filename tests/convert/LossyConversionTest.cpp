// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/StatedFormat.h"
#include "platform/Resources.h"
#include "support/Audio.h"
#include "support/EnvironmentVariable.h"
#include "support/Session.h"
#include "support/TaggedAudio.h"
#include "tabs/DecodeTab.h"
#include "tabs/LossyTab.h"
#include "tags/AACTagsHelper.h"
#include "tags/TagLibTagsHelper.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fileref.h>
#include <gtest/gtest.h>
#include <tag.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

constexpr std::size_t frames = 100'003; // at 44.1 kHz: no whole number of any encoder's frames

/// Conversions by the real tools, next to their sources.
struct LossyConversion : testing::Test
{
    Session session;
    LossyTab &tab = session.controller.lossyTab();

    QString music(const QString &name) const { return session.music + u'/' + name; }
    QString wav(const QString &name)
    {
        writeWav(music(name), {.frames = frames});
        return music(name);
    }
    /// A lossless file of the codec that ffmpeg calls `codec`.
    QString lossless(const QString &name, const QString &codec)
    {
        toolOutput(u"ffmpeg"_s,
                   {u"-v"_s, u"error"_s, u"-i"_s, wav(u"source.wav"_s), u"-c:a"_s, codec, music(name)});
        QFile::remove(music(u"source.wav"_s));
        return music(name);
    }
    /// Returns what the jobs that failed say.
    QString encode(const QString &format, const QStringList &files)
    {
        session.ended.clear();
        tab.outputFormatMatrix().selectId(format.toLower());
        tab.sourceEncodeButton().setOn(true);
        tab.addFiles(files);
        tab.executeCommand();
        EXPECT_TRUE(session.runToEnd());
        QString text;
        for (const Ended &job : session.ended) {
            text += job.error ? job.text + u'.' : QString();
        }
        return text;
    }
    void deleteOriginals()
    {
        session.preferences.setValue(u"warnOnDelete"_s, false);
        tab.deleteOriginalsButton().setOn(true);
        session.controller.decodeTab().deleteOriginalsButton().setOn(true);
    }
    QStringList names() const { return QDir(session.music).entryList(QDir::Files | QDir::Hidden); }
};

qint64 decodedFrames(const QString &path)
{
    const QString options = u"-v error -i - -vn -f s16le -ac 1 -"_s;
    QStringList arguments = options.split(u' ');
    arguments[3] = path;
    return toolOutput(u"ffmpeg"_s, arguments).size() / 2;
}

} // namespace

TEST_F(LossyConversion, KeepsLengthTagsAndPicture)
{
    const QString source = lossless(u"f 50% \"x\".flac"_s, u"flac"_s);
    TagLibTagsHelper().writeTagsForFLACFile(source, *fullRecord(), false);
    const QString base = music(u"f 50% \"x\""_s);
    const auto original = TagLibTagsHelper().tagsForFlacFile(source);
    EXPECT_EQ(encode(u"MP3"_s, {source}), QString());
    EXPECT_EQ(decodedFrames(base + u".mp3"_s), frames);
    EXPECT_TRUE(TagLibTagsHelper().tagsForMP3File(base + u".mp3"_s)->isEqualToTagsObject(*original));

    EXPECT_EQ(encode(u"Opus"_s, {source}), QString());
    EXPECT_EQ(decodedFrames(base + u".opus"_s), frames * 48'000 / 44'100 + 1);
    const TagLib::FileRef opus(QFile::encodeName(base + u".opus"_s).constData());
    EXPECT_EQ(QString::fromUtf8(opus.tag()->title().toCString(true)), original->titleText());
    EXPECT_EQ(QString::fromUtf8(opus.tag()->artist().toCString(true)), original->artistText());

    tab.aacMatrix().select(3);
    EXPECT_EQ(encode(u"AAC"_s, {source}), QString());
    EXPECT_EQ(statedFormat(base + u".m4a"_s).totalSamples, frames);
    EXPECT_TRUE(AACTagsHelper().tagsForFile(base + u".m4a"_s)->isEqualToTagsObject(*original));
    const QByteArray m4a = readFile(base + u".m4a"_s);
    EXPECT_TRUE(m4a.contains("pgap"));
    EXPECT_LT(m4a.indexOf("moov"), m4a.indexOf("mdat"));
    EXPECT_EQ(names().size(), 4) << "no temporary file stays";
}

TEST_F(LossyConversion, ReplacesASongByItselfOnlyWithAWholeOne)
{
    const QString song = lossless(u"song.m4a"_s, u"alac"_s);
    AACTagsHelper().writeTagsForFile(song, *fullRecord(), false, false);
    const QByteArray before = readFile(song);
    QFile::setPermissions(song, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    session.person.buttonAnswers = {1};
    EXPECT_TRUE(encode(u"AAC"_s, {song}).contains(u"is the source itself"_s));
    EXPECT_EQ(readFile(song), before);
    deleteOriginals();
    const QString resources = session.folder.makeFolder(u"resources"_s);
    const QString tool = session.folder.file(u"resources/aacplusenc"_s);
    // How an encoder may fail, the last two with the status of success.
    for (const char *script :
         {"exit 1", "echo half >\"$2\"; exit 1", "kill -9 $$", "rm \"$2\"", ":", "echo x >\"$2\""}) {
        writeFile(tool, QByteArray("#!/bin/sh\n") + script);
        QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner);
        const EnvironmentVariable variable("KRUV_RESOURCES", resources.toUtf8());
        session.person.buttonAnswers = {1, 1}; // replace it, though the output gets no tags
        EXPECT_NE(encode(u"HE-AAC"_s, {song}), QString()) << script;
        EXPECT_EQ(readFile(song), before) << script;
        EXPECT_EQ(names(), QStringList{u"song.m4a"_s});
    }
    session.person.buttonAnswers = {1};
    const auto tags = AACTagsHelper().tagsForFile(song);
    EXPECT_EQ(encode(u"AAC"_s, {song}), QString());
    EXPECT_EQ(names(), QStringList{u"song.m4a"_s});
    EXPECT_TRUE(readFile(song).contains("mp4a"));
    EXPECT_TRUE(AACTagsHelper().tagsForFile(song)->isEqualToTagsObject(*tags));
    EXPECT_EQ(QFileInfo(song).permission(QFile::ReadGroup), true);
}

TEST_F(LossyConversion, KeepsOutputsThatAreThereUntilNewOnesAreWhole)
{
    deleteOriginals();
    writeWav(music(u"a.wav"_s), {.frames = frames});
    writeWav(music(u"b.mp3"_s), {.frames = frames}); // its name lies, and is that of its output
    const QByteArray sound = readFile(music(u"a.wav"_s));
    for (const char *output : {"a.mp3", "a.opus", "a.m4a"}) {
        writeFile(music(QString::fromLatin1(output)), "a person's own");
    }
    const QString resources = session.folder.makeFolder(u"resources"_s);
    const QString tool = session.folder.file(u"resources/aacplusenc"_s);
    writeFile(tool, "#!/bin/sh\necho half >\"$2\"; exit 1");
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner);
    constexpr int skip = 0;
    for (const QString &format : {u"MP3"_s, u"Opus"_s}) {
        session.person.buttonAnswers = {skip};
        EXPECT_EQ(encode(format, {music(u"a.wav"_s)}), QString());
        EXPECT_TRUE(session.ended.empty());
    }
    {
        const EnvironmentVariable variable("KRUV_RESOURCES", resources.toUtf8());
        session.person.buttonAnswers = {1};
        EXPECT_NE(encode(u"HE-AAC"_s, {music(u"a.wav"_s)}), QString());
    }
    for (const char *output : {"a.mp3", "a.opus", "a.m4a"}) {
        EXPECT_EQ(readFile(music(QString::fromLatin1(output))), "a person's own");
    }
    EXPECT_EQ(readFile(music(u"a.wav"_s)), sound);
    EXPECT_EQ(readFile(music(u"b.mp3"_s)), sound);
    session.person.buttonAnswers = {1};
    EXPECT_EQ(encode(u"AAC"_s, {music(u"a.wav"_s)}), QString());
    EXPECT_EQ(decodedFrames(music(u"a.m4a"_s)) / 1024, (frames + 1023) / 1024);
    EXPECT_EQ(names(), (QStringList{u"a.m4a"_s, u"a.mp3"_s, u"a.opus"_s, u"b.mp3"_s}));
}

TEST_F(LossyConversion, DeletesOnlyOriginalsThatWereEncodedWhole)
{
    deleteOriginals();
    wav(u"whole.wav"_s);
    writeFile(music(u"short.wav"_s), readFile(music(u"whole.wav"_s)).chopped(50'000));
    writeFile(music(u"junk.wav"_s), "no audio at all, but long enough for a header of some kind");
    EXPECT_NE(encode(u"MP3"_s, {session.music}), QString());
    EXPECT_NE(encode(u"Opus"_s, {session.music}), QString());
    EXPECT_EQ(names(), (QStringList{u"junk.wav"_s, u"short.wav"_s, u"whole.mp3"_s}));
}

TEST_F(LossyConversion, DecodesOpusAndNoticesDamage)
{
    writeWav(music(u"a.wav"_s), {.frames = 220'500});
    EXPECT_EQ(encode(u"Opus"_s, {music(u"a.wav"_s)}), QString());
    QFile::remove(music(u"a.wav"_s));
    QByteArray damaged = readFile(music(u"a.opus"_s));
    damaged.replace(damaged.size() / 2, 400, QByteArray(400, 'x'));
    writeFile(music(u"b.opus"_s), damaged);
    deleteOriginals();
    DecodeTab &decode = session.controller.decodeTab();
    decode.outputFormatMatrix().selectId(u"aiff"_s);
    decode.sourceDecodeButton().setOn(true);
    decode.addFiles({session.music});
    decode.executeCommand();
    EXPECT_TRUE(session.runToEnd());
    EXPECT_EQ(names(), (QStringList{u"a.aiff"_s, u"b.opus"_s}));
    EXPECT_EQ(readAiff(music(u"a.aiff"_s)).frames(), 5U * 44'100);
}

} // namespace kruv::test
