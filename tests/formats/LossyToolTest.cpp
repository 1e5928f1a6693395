// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/ShntoolConversion.h"
#include "formats/heaac/HeAacTool.h"
#include "formats/mp3/Mp3Tool.h"
#include "formats/opus/OpusTool.h"
#include "support/Files.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

/// The percentages that a reader sees in a recorded run, in whole numbers.
QList<int> percentages(const QString &recording, ToolReader read)
{
    QList<int> seen;
    const QByteArray file = readFile(u"%1/%2.txt"_s.arg(QStringLiteral(KRUV_TEST_DATA), recording));
    for (QByteArray line : file.split('\n').mid(1)) {
        line.replace("\\b", "\b").replace("\\n", "\n").replace("\\r", "\r").replace("\\e", "\x1b");
        if (const auto percentage = read(QString::fromUtf8(line), {}).percentage) {
            seen.append(static_cast<int>(*percentage));
        }
    }
    return seen;
}

} // namespace

TEST(LossyTools, PassesEveryChoiceToTheEncoders)
{
    ToolRequest request{.input = u"/a.shn"_s, .output = u"/o/a.mp3"_s};
    request.options.set(Mp3Tool::mode, 1);
    request.options.set(Mp3Tool::bitRate, 192);
    EXPECT_EQ(
        Mp3Tool::encodeByShntool(request, {.jointStereo = false, .qValue = 2}).join(u'|'),
        u"conv|-P|pct|-O|never|-o|cust ext=mp3 lame -m s -q 2 --abr 192 - %f|-d|/o|-n|/o/a.mp3|/a.shn"_s);
    request.options.set(Mp3Tool::mode, 2);
    EXPECT_EQ(Mp3Tool::encode(request, {.jointStereo = true, .qValue = 0}).join(u'|'),
              u"--brief|-m|j|-q|0|-V|3|/a.shn|/o/a.mp3"_s);
    ToolRequest opus{.input = u"/a.wav"_s, .output = u"/a.opus"_s};
    opus.options.set(OpusTool::bitRate, 96);
    opus.options.set(OpusTool::frameSize, 0);
    EXPECT_EQ(OpusTool::encode(opus, u"T"_s, u"-x"_s).join(u'|'),
              u"--hard-cbr|--bitrate|96|--framesize|2.5|--title|T|--artist|-x|/a.wav|/a.opus"_s);
}

// A late reader gets several updates in one piece.
TEST(LossyTools, ReadsTheNewestProgressOfEveryEncoder)
{
    using Seen = QList<int>;
    EXPECT_EQ(percentages(u"lame-3.100/cbr-joined"_s, Mp3Tool::read),
              Seen({0, 7, 13, 20, 33, 39, 46, 52, 59, 72, 78, 85, 91, 100}));
    EXPECT_EQ(percentages(u"shntool-3.0.10/conv-mp3-joined"_s, ShntoolConversion::read),
              Seen({0, 14, 29, 48, 63, 78, 92, 100}));
    EXPECT_EQ(percentages(u"aacplusenc-1.0/joined"_s, HeAacTool::read),
              Seen({0, 8, 17, 27, 38, 48, 60, 71, 85, 99, 100}));
    EXPECT_EQ(percentages(u"opus-tools-0.2/opusenc-joined"_s, OpusTool::read),
              Seen({0, 5, 10, 15, 20, 27, 32, 38, 43, 49, 55, 61, 67, 72, 78, 85, 91, 97}));
    EXPECT_EQ(Mp3Tool::read(u"( 1%)|", {}).percentage, std::nullopt) << "too near the start";
    EXPECT_EQ(ShntoolConversion::read(u"Converting [50%.wav] (0:40.00) --> [./z.mp3] : ", {}).percentage,
              std::nullopt);
}

} // namespace kruv::test
