// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Readers and writers of texts about tracks, without a tool.

#include "base/TextEncoding.h"
#include "shntool/SHNToolLenReport.h"
#include "shntool/SHNToolOutput.h"
#include "shntool/SHNtoolOutputNamingFormatParser.h"
#include "shntool/SplitPositions.h"
#include "shntool/SplitTitles.h"
#include "support/QtPrinters.h"
#include "tags/TrackNameText.h"

#include <QStringEncoder>

#include <gtest/gtest.h>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

TEST(TrackText, ListingPatternsLayOutTracksAndTotals)
{
    const struct
    {
        QString pattern;
        QString line;
        QString total;
    } cases[] = {
        {u"%number. %name %time"_s, u"07. %time 03:45.32"_s, u"03:45.32"_s},
        {u"/%name [%time]x/"_s, u"%time [03:45.32]"_s, u"[03:45.32]"_s},
        {u"[%time] %number/%name"_s, u"[03:45.32] 07/%time"_s, u"[03:45.32]"_s},
        {u"%number-%time %name"_s, u"07-03:45.32 %time"_s, u"03:45.32"_s},
        {u"%name all: %time min"_s, u"%time all: 03:45.32 min"_s, u"all: 03:45.32"_s},
        {u"%name"_s, u"%time"_s, QString()},
        {u"/"_s, QString(), QString()},
    };
    for (const auto &each : cases) {
        const SHNtoolOutputNamingFormatParser parser(each.pattern);
        // A name may hold a token's text.
        EXPECT_EQ(parser.getFormattedLineWithName(u"%time"_s, u"03:45.32"_s, u"07"_s), each.line + u'\n')
            << each.pattern.toStdString();
        EXPECT_EQ(parser.getFormattedTotalLine(u"03:45.32"_s), each.total + u'\n')
            << each.pattern.toStdString();
    }
}

TEST(TrackText, TrackListsGiveTheirNames)
{
    EXPECT_EQ(
        TrackNameText::namesInTrackList(u"Tracklist\r\n2. before the first\r\n1. Intro (1:23)\r2) [3:05]\n"
                                        u"12/24/1999 Live\nencore:\n3)\n[4] 10:30 Blues 10:30\n(5) 99.\n"_s),
        (QStringList{u"Intro "_s, QString(), u"(blank)"_s, QString(), QString()}));
    EXPECT_EQ(TrackNameText::namesInTrackList(u"Intro\nOutro\n"_s), QStringList());
    EXPECT_EQ(TrackNameText::trimmed(u"01 One\n0\n\n𝄞𝄞"_s, {.number = 3, .position = 0}), u"One\n0\n\n"_s);
    EXPECT_EQ(TrackNameText::trimmed(u"One.wav\n\nab"_s, {.number = 4, .position = 1}), u"One\n\nab"_s);
}

TEST(TrackText, TitlesBecomeFileNamesThatStayInTheirFolder)
{
    const QString sheet =
        u"TITLE \"Album\"\nFILE \"x.wav\" WAVE\n  TRACK 01 AUDIO\n\tTITLE \"../../x\"\n"
        u"TRACK 02 AUDIO\nTRACK 03 AUDIO\nTITLE Ça\u0007 \"va\"\"\n TRACK 04 AUDIO\nTITLE \""_s +
        QString(200, u'日') + u"\"\n"_s;
    const QMap<QString, QString> expected{
        {u"split-track01.wav"_s, u"01 ..-..-x.wav"_s},
        {u"split-track03.wav"_s, u"03 Ça  \"va\".wav"_s},
        {u"split-track04.wav"_s, u"04 "_s + QString(82, u'日') + u".wav"_s}, // 253 bytes
    };
    for (const char *encoding : {"UTF-8", "UTF-16", "UTF-16LE", "UTF-16BE"}) {
        QStringEncoder encode(encoding);
        const QByteArray bytes = encode(sheet);
        EXPECT_EQ(SplitTitles::trackTitleMap(TextEncoding::text(bytes), u"wav"_s), expected) << encoding;
    }
    const QByteArray latin1 =
        "TRACK 01 AUDIO\r\nTITLE \"Les \351t\351s \340 la plage, \347a va tr\350s bien\"\r\n";
    EXPECT_EQ(SplitTitles::trackTitleMap(TextEncoding::text(latin1), u"flac"_s).first(),
              u"01 Les étés à la plage, ça va très bien.flac"_s);
}

TEST(TrackText, WhatIsNoPointToSplitAtIsNamed)
{
    for (const auto &[text, problem] :
         {std::pair{u"0:01\r\n 1:02.33\r\n0:03.250\n176400\n\n  \n"_s, u""_s},
          {u"0:01\n\n-5\n"_s, u"Line 3 is no point: \"-5\"."_s},
          {u"0:61\n"_s, u"Line 1 "_s},
          {u"FILE \"a.wav\" WAVE\n\n TRACK 01 AUDIO\n INDEX 01 00:00:00\n"_s, u""_s},
          {u"FILE \"a.wav\" WAVE\n INDEX 01 00:00:00\nFILE \"b.wav\" WAVE\n INDEX 01 00:00:00\n"_s,
           u"The cue sheet is of 2 files"_s}}) {
        const QString found = SplitPositions::problemIn(text);
        EXPECT_TRUE(problem.isEmpty() ? found.isEmpty() : found.startsWith(problem)) << found.toStdString();
    }
}

TEST(TrackText, LengthReportsSurviveWarningsInTheMiddleOfALine)
{
    const QString header = u"    length     expanded size    cdr  WAVE problems  fmt   ratio  filename\n"_s;
    const QString output = u"shntool [len]: warning: none handles: [/m/9:99 bad.wav]\n"_s + header +
                           u"     3:45.32        1962140 B   -b-   --   -----    wav  1.0000  /m/one.wav\n"
                           u"    12:01.00        19shntool [len]: warning: gone: [/m/x.wav]\n"
                           u"62140 B   -b-   --   -----   flac  0.5000  /m/new\nline.flac\n"
                           u"    15:46.32        3924280 B                            0.7500  (2 files)\n"_s;
    const SHNToolLenReport report(output);
    EXPECT_EQ(report.messages(), u"shntool [len]: warning: none handles: [/m/9:99 bad.wav]\n"
                                 u"shntool [len]: warning: gone: [/m/x.wav]\n"_s);
    EXPECT_TRUE(report.normal().startsWith(
        header + u"     3:45.32        1962140 B   -b-   --   -----    wav  1.0000  one.wav\n"_s));

    const SHNtoolOutputNamingFormatParser parser(u"%number. %name %time"_s);
    EXPECT_EQ(report.byFileSet({}, parser),
              u"01 one.wav 03:45.32\n02 new line.flac 12:01.00\n\nTotal: 15:46.32\n \n\n"_s);
    // The file that could not be read doesn't shift the names of the others.
    const SHNToolLenReport::FileSet disc{u"2"_s,
                                         {u"/m/one.wav"_s, u"/m/9:99 bad.wav"_s, u"/m/new\nline.flac"_s},
                                         {u"First"_s, u"Lost"_s, u"Third"_s},
                                         5};
    EXPECT_EQ(report.byFileSet(disc, parser), u"Disc 2\n\n01. First  03:45.32\n02. Third  12:01.00\n"
                                              u"\nDisc 2 Total: 15:46.32\n \n\n"_s);
}

TEST(TrackText, ProgressIsReadBehindAnyName)
{
    const struct
    {
        QString line;
        QString phase;
        QString name;
        std::optional<double> percentage;
    } cases[] = {
        {u"Scanning [/a/50% off.wav] (0:24.00) :   0% "_s, u"Scanning"_s, u"50% off.wav"_s, 0.0},
        {u"Post-padding [/a/b] (1.wav] (12:24.000) --> [/a : 3/x.wav] : 100% OK"_s, u"Post-padding"_s,
         u"b] (1.wav"_s, 100.0},
        {u"Splitting [/a/50% o"_s, u"Splitting"_s, QString(), {}},
        {u"Padded last file with 768 zero-bytes."_s, QString(), QString(), {}},
    };
    for (const auto &each : cases) {
        EXPECT_EQ(SHNToolOutput::phase(each.line), each.phase);
        EXPECT_EQ(SHNToolOutput::fileName(each.line), each.name);
        EXPECT_EQ(SHNToolOutput::percentage(each.line), each.percentage);
    }
}

} // namespace kruv::test
