// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/QtPrinters.h"
#include "util/CdOutput.h"
#include "util/CdTracks.h"
#include "util/FormatSummary.h"
#include "util/SoxOutput.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

TEST(UtilText, TracksAreOrderedByNumber)
{
    EXPECT_EQ(CdTracks::reNumberCdTracks(
                  {u"/d/10 Z.aiff"_s, u"/d/2 B.aiff"_s, u"/d/Track 1.wav"_s, u"/d/03.wav"_s}),
              (QStringList{u"/d/Track 1.wav"_s, u"/d/2 B.aiff"_s, u"/d/03.wav"_s, u"/d/10 Z.aiff"_s}));
    EXPECT_EQ(CdTracks::getTrackNumberForExtract({u"/d/12 Z.wav"_s, u"/d/3 A.wav"_s, u"/d/cover.jpg"_s}),
              u"3+12"_s);
    EXPECT_EQ(CdTracks::getTrackNumberForExtract({u"/d/Song.wav"_s, u"/d/0 A.wav"_s}), QString());
    for (const char *wrong : {"", "3", "12+3", "0+3", "3+100", "3+4+5", "a+b"}) {
        EXPECT_FALSE(CdTracks::range(QString::fromLatin1(wrong))) << wrong;
    }
}

TEST(UtilText, ReadsTheExtractionToolWhateverTheCuts)
{
    const QString output = u"percent_done:\n  0%\r 50%\r100%  track  3 recorded successfully\n"
                           "  0 rderr, 12 skip, 0 atom, 0 edge\npercent_done:\n  0%\r100%\n"
                           "  1 rderr, 0 skip, 3 atom, 9 edge\n"_s;
    for (int cut = 1; cut < output.size(); ++cut) {
        CdOutput::TrackEnds ends;
        EXPECT_EQ(ends.count(output.left(cut)) + ends.count(output.mid(cut)), 2) << cut;
    }
    EXPECT_EQ(CdOutput::percentages(output), (QStringList{u"0"_s, u"50"_s, u"100"_s, u"0"_s, u"100"_s}));
    EXPECT_EQ(CdOutput::stripPercent(u"reading\n\n 45%"_s), u"reading\n\n "_s);
    EXPECT_EQ(CdOutput::stripPercent(u"track\n\n"_s), u"track"_s);
    EXPECT_EQ(CdOutput::logText(u"x\ncdda2wav: y\ncdda2wav: z"_s), u"cdda2wav: y\ncdda2wav: z"_s);
}

TEST(UtilText, ReadsSoxAmongItsProgress)
{
    EXPECT_EQ(
        SoxOutput::percentageText(u"\rIn:13.7% 00:00 Out:1.57M \rIn:20.1% 00:00:01 [-==|==-] Clip:0    "_s),
        u"20.1"_s);
    EXPECT_EQ(SoxOutput::percentageText(u"\rIn:100% Out:9\nsox WARN sox: `50%: In.wav' clipped"_s), u"100"_s);
    EXPECT_EQ(SoxOutput::percentageText(u"100% In: nothing"_s), QString());
    SoxOutput::Messages messages;
    EXPECT_EQ(messages.read(u"\rIn:0.00% Out:0 Clip:0    /opt/kruv/sox WA"), QStringList());
    EXPECT_EQ(messages.read(u"RN wav: Premature EOF on .wav input file\n\rIn:28"),
              QStringList{u"sox WARN wav: Premature EOF on .wav input file"_s});
    EXPECT_EQ(messages.shortEnd(), u"sox WARN wav: Premature EOF on .wav input file"_s);
}

TEST(UtilText, PutsLengthsAndSizesInWords)
{
    EXPECT_EQ(parseTimeAsString(59.6), u"1:00"_s);
    EXPECT_EQ(parseTimeAsString(3723), u"1:02:03"_s);
    EXPECT_EQ(parseSizeFromTimeAsString(3600, 44100, 16, 2), u"635 MB"_s);
    EXPECT_EQ(parseSizeFromTimeAsString(3600, 96000, 24, 2), u"2.07 GB"_s);
}

} // namespace kruv::test
