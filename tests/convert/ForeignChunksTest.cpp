// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What WAV and AIFF files hold beside their audio, when they are to go.

#include "audio/ForeignChunks.h"

#include "platform/Resources.h"
#include "support/Audio.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "support/Session.h"
#include "tabs/EncodeTab.h"
#include "tabs/FixTab.h"

#include <QtEndian>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

QByteArray chunk(const char *name, const QByteArray &content, bool isAiff = false)
{
    QByteArray size(4, '\0');
    isAiff ? qToBigEndian(static_cast<quint32>(content.size()), size.data())
           : qToLittleEndian(static_cast<quint32>(content.size()), size.data());
    return name + size + content + QByteArray(content.size() % 2, '\0');
}

/// A file with more in it, at its beginning and at its end.
QByteArray with(QByteArray file, const QByteArray &front, const QByteArray &back)
{
    file.insert(12, front).append(back);
    const auto size = static_cast<quint32>(file.size() - 8);
    file.startsWith("FORM") ? qToBigEndian(size, file.data() + 4) : qToLittleEndian(size, file.data() + 4);
    return file;
}

const QByteArray broadcast = chunk("bext", QByteArray(603, 'x'));
const QByteArray program = chunk("LIST", "INFO" + chunk("ISFT", "Lavf59.27.100"));
const QByteArray artist = chunk("LIST", "INFO" + chunk("ISFT", "Lavf") + chunk("IART", "Joe"));

class ForeignChunksKept : public testing::Test
{
protected:
    /// Encodes a.wav with its original to go. True when it went unasked.
    bool goesUnasked(const QString &format)
    {
        const QString wav = session.music + u"/a.wav"_s;
        writeFile(wav, with(wavBytes(makeAudio({.frames = 3000})), broadcast, artist));
        session.preferences.setValue(u"warnOnDelete"_s, false);
        EncodeTab &tab = session.controller.encodeTab();
        tab.outputFormatMatrix().selectId(format);
        tab.deleteOriginalsButton().setOn(true);
        tab.addFiles({wav});
        session.person.textAnswers = {session.folder.makeFolder(u"run-%1"_s.arg(++runs))};
        session.person.questions.clear();
        session.person.buttonAnswers = {0}; // keep it
        session.ended.clear();
        tab.executeCommand();
        EXPECT_TRUE(session.runToEnd());
        const bool wasAsked = !session.person.questions.empty();
        EXPECT_EQ(QFile::exists(wav), wasAsked || session.ended.at(0).error);
        return !wasAsked && !session.ended.at(0).error;
    }

    Session session;
    int runs = 0;
};

} // namespace

TEST(ForeignChunks, AreWhatMeansSomething)
{
    const TemporaryFolder folder;
    const QByteArray wav = wavBytes(makeAudio({.frames = 301}));
    const QByteArray aiff = aiffBytes(makeAudio({.frames = 301}));
    const struct
    {
        const char *what;
        QByteArray bytes;
        std::size_t found;
    } cases[] = {
        {"plain", wav, 0},
        {"padding and the program's name", with(wav, chunk("JUNK", QByteArray(28, '\0')), program), 0},
        {"an odd one in front, a list behind", with(wav, broadcast, artist), 2},
        {"zeros behind", wav + QByteArray(5000, '\0'), 0},
        {"cut in the middle of a chunk", with(wav, broadcast, artist).chopped(5), 1},
        {"plain AIFF", aiff, 0},
        {"AIFF", with(aiff, chunk("NAME", "Dark", true), chunk("ID3 ", "ID3", true)), 1},
        {"no WAV", "fLaC" + QByteArray(100, '\0'), 0},
        {"empty", {}, 0},
    };
    for (const auto &[what, bytes, found] : cases) {
        EXPECT_EQ(ForeignChunks::of(folder.write(u"file"_s, bytes)).size(), found) << what;
    }
}

TEST_F(ForeignChunksKept, OriginalsGoUnaskedOnlyWhereTheyComeBack)
{
    EXPECT_TRUE(goesUnasked(u"shn"_s));
    EXPECT_TRUE(goesUnasked(u"wv"_s));
    EXPECT_TRUE(goesUnasked(u"ape"_s));
    EXPECT_FALSE(goesUnasked(u"tta"_s));
    EXPECT_FALSE(goesUnasked(u"m4a"_s));
    EXPECT_FALSE(goesUnasked(u"flac"_s));
    session.controller.encodeTab().flacKeepForeignMetadataButton().setOn(true);
    EXPECT_TRUE(goesUnasked(u"flac"_s));
}

TEST_F(ForeignChunksKept, FixedSetsNeverHaveThem)
{
    const QString wav = session.music + u"/a.wav"_s;
    writeFile(wav, with(wavBytes(makeAudio({.frames = 3000})), broadcast, {}));
    session.preferences.setValue(u"warnOnDelete"_s, false);
    FixTab &tab = session.controller.fixTab();
    tab.outputFormatMatrix().selectId(u"shn"_s);
    tab.deleteOriginalsButton().setOn(true);
    tab.addFiles({wav});
    session.person.textAnswers = {session.folder.makeFolder(u"fixed"_s)};
    session.person.buttonAnswers = {0}; // keep it
    tab.executeCommand();
    ASSERT_TRUE(session.runToEnd());
    EXPECT_EQ(session.person.questions.size(), 1U);
    EXPECT_TRUE(QFile::exists(wav));
}

TEST_F(ForeignChunksKept, FlacThatLosesThemIsDisproved)
{
    const QString tools = session.folder.makeFolder(u"tools"_s);
    const QString tool =
        session.folder.write(u"tools/flac"_s, "#!/bin/sh\nfor a; do shift\n"
                                              "[ \"$a\" = --keep-foreign-metadata ] || set -- \"$@\" \"$a\"\n"
                                              "done\nexec " +
                                                  toolPath(u"flac"_s).toUtf8() + " \"$@\"\n");
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner);
    const EnvironmentVariable resources("KRUV_RESOURCES", tools.toUtf8());
    session.controller.encodeTab().flacKeepForeignMetadataButton().setOn(true);
    EXPECT_FALSE(goesUnasked(u"flac"_s));
    EXPECT_TRUE(session.person.questions.empty());
    EXPECT_TRUE(session.ended.at(0).text.contains(u"foreign metadata"_s));
}

} // namespace kruv::test
