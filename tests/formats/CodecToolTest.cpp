// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/ShntoolConversion.h"
#include "formats/flac/FlacCommandLine.h"
#include "formats/flac/FlacTool.h"
#include "formats/monkeysaudio/MacTool.h"
#include "formats/tta/TtaTool.h"
#include "formats/wavpack/WavpackTool.h"
#include "support/Files.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

struct Seen : ToolPiece
{
    QList<double> percentages;
};

/// What a reader sees of one run of a tool, recorded read by read.
Seen read(const QString &recording, ToolReader reader)
{
    Seen seen;
    const QByteArray file = readFile(u"%1/%2.txt"_s.arg(QStringLiteral(KRUV_TEST_DATA), recording));
    for (QByteArray line : file.split('\n').mid(1)) {
        line.replace("\\b", "\b").replace("\\n", "\n").replace("\\r", "\r");
        const ToolPiece piece = reader(QString::fromUtf8(line), u"long.wav");
        if (piece.percentage) {
            seen.percentages << *piece.percentage;
        }
        seen.results += piece.results;
        seen.failed = seen.failed || piece.failed;
    }
    return seen;
}

} // namespace

TEST(CodecTools, BuildTheirLines)
{
    const ToolRequest plain{.input = u"/i/-a b"_s, .output = u"/o/c"_s};
    ToolRequest chosen = plain;
    chosen.options.set(WavpackTool::mode, 1);
    chosen.options.set(MacTool::level, 4000);
    FlacCommandLine::EncodeRequest flac{.source = u"/i/a"_s, .output = u"/o/c"_s, .level = 8, .verify = true};
    const auto flacLine = [&flac](int level, bool lax, bool verify) {
        flac.level = level;
        flac.lax = lax;
        flac.verify = verify;
        return flac;
    };
    const std::pair<QStringList, QString> lines[] = {
        {WavpackTool::encode(plain), u"-f|/i/-a b|-o|/o/c"_s},
        {WavpackTool::encode(chosen), u"-h|/i/-a b|-o|/o/c"_s},
        {WavpackTool::decode(plain), u"/i/-a b|-o|/o/c"_s},
        {WavpackTool::decodeForAiff(plain), u"/i/-a b|-y|-o|/o/c"_s},
        {WavpackTool::decodeToTemporary(plain), u"/i/-a b|-o|/o/c|-y"_s},
        {TtaTool::convert(plain), u"/i/-a b|-o|/o/c"_s},
        {MacTool::compress(plain), u"/i/-a b|/o/c|-c2000"_s},
        {MacTool::compress(chosen), u"/i/-a b|/o/c|-c4000"_s},
        {MacTool::extract(plain), u"/i/-a b|/o/c|-d"_s},
        {FlacTool::toWav.arguments(plain), u"-d|/i/-a b|-o|/o/c|-f"_s},
        {FlacCommandLine::encodeTemporary(flacLine(5, false, true)), u"-V|/i/a|-o|/o/c"_s},
        {FlacCommandLine::encodeTemporary(flacLine(5, false, false)), u"/i/a|-o|/o/c"_s},
        {FlacCommandLine::encodeTemporary(flacLine(8, false, false)), u"-8|/i/a|-o|/o/c"_s},
        {FlacCommandLine::encodeTemporary(flacLine(8, true, false)), u"--lax|/i/a|-o|/o/c"_s},
        {ShntoolConversion::decode(plain), u"conv|-P|pct|-O|always|-o|wav|-n|/o/c|/i/-a b"_s},
        {ShntoolConversion::convert(u"shn"_s, u"/o"_s, u"/i/a"_s),
         u"conv|-o|shn|-P|pct|-O|never|-d|/o|/i/a"_s},
        {FlacCommandLine::encodeByShntool(flacLine(8, false, true), u"/o"_s),
         u"conv|-P|pct|-O|never|-d|/o|-o|cust ext=flac flac -8  -V  -o %f -|/i/a"_s},
        {FlacCommandLine::encodeByShntool(flacLine(0, false, false), u"/o"_s),
         u"conv|-P|pct|-O|never|-d|/o|-o|cust ext=flac flac -0  -o %f -|/i/a"_s},
        {FlacCommandLine::encodeByShntool(flacLine(8, true, true), u"/o"_s),
         u"conv|-P|pct|-O|never|-d|/o|-o|cust ext=flac flac --lax -o %f -|/i/a"_s},
    };
    for (const auto &[arguments, expected] : lines) {
        EXPECT_EQ(arguments.join(u'|'), expected);
    }
}

TEST(CodecTools, ReadsWhatTheToolsPrinted)
{
    const QList<double> updates = {2,  5,  7,  10, 12, 15, 17, 20, 22, 24, 27,
                                   79, 81, 84, 86, 89, 91, 94, 96, 99, 100};
    const Seen encode = read(u"wavpack-5.6.0/encode"_s, WavpackTool::read);
    EXPECT_EQ(encode.percentages, updates);
    EXPECT_FALSE(encode.failed);
    const Seen exists = read(u"wavpack-5.6.0/exists"_s, WavpackTool::read);
    EXPECT_TRUE(exists.failed);
    const Seen truncated = read(u"wavpack-5.6.0/truncated"_s, WavpackTool::read);
    EXPECT_TRUE(truncated.failed);

    const QString start = u"[long.wav] (1:00.00) --> [/tmp/long.flac] :   0% "_s;
    const Seen shntool = read(u"shntool-3.0.10/encode"_s, ShntoolConversion::read);
    EXPECT_EQ(shntool.percentages.first(3), (QList<double>{0, 2, 4}));
    EXPECT_EQ(shntool.percentages.last(), 100);
    EXPECT_EQ(shntool.results, u"Converting 100% OK\n"_s);
    const QString repeated = read(u"shntool-3.0.10/encode"_s, ShntoolConversion::readRepeating).results;
    EXPECT_TRUE(repeated.startsWith(u"Converting Converting "_s + start + u"  2% "_s));
    EXPECT_TRUE(repeated.endsWith(u"100% OK\n100% OK\n"_s));
    EXPECT_TRUE(read(u"shntool-3.0.10/exists"_s, ShntoolConversion::readPlain)
                    .results.endsWith(
                        u"ERROR\nshntool [conv]: warning: could not open output file -- skipping.\n"_s));
}

TEST(CodecTools, ReadsSinglePieces)
{
    struct Case
    {
        ToolReader read;
        QString piece;
        QString percentageText; // empty for none
        QString detail;
        bool failed;
    };
    const Case cases[] = {
        {WavpackTool::read, u"\b\u001b]0;57% (WavPack)\u0007 57% done..."_s, u"57.000000"_s, {}, false},
        {WavpackTool::read, u"\rcreated a.wv in 1 secs (lossless, 46.37%) "_s, {}, {}, false},
        {MacTool::read, u"Progress: 12.5% (3.2 seconds remaining, 5.3 seconds total)  \r"_s, u"12.5"_s,
         u"3.2"_s, false},
        {MacTool::read,
         u"Progress: 1.0% (9.0 seconds remaining, 9.1 seconds total)\rProgress: 2.0% (8.0 seconds "
         u"remaining, 8.2 seconds total)\rProgress: 3.0% (7"_s,
         u"2.0"_s, u"8.0"_s, false},
        {MacTool::read, u"Progress: 12.5"_s, {}, {}, false},
        {MacTool::read, u"\nmac: the input holds no audio\nError: 1008\n"_s, {}, {}, true},
        {MacTool::read, u"\nError: 2000\n"_s, {}, {}, true},
        {TtaTool::read, u"Percent Progress: 42\r"_s, u"42.000000"_s, {}, false},
        {TtaTool::read, u"ttaenc: 50% off.wav: not a WAV file\n"_s, {}, {}, false},
        {FlacTool::encode.read, u"\b\b42% complete, ratio=0.581"_s, u"42"_s, u"ratio=0.581"_s, false},
        {FlacTool::toWav.read, u"\b\blong.wav: 12% complete "_s, u"12.000000"_s, {}, false},
        {ShntoolConversion::readWords, u"\b\b\b\b\b  7% "_s, u"7"_s, {}, false},
    };
    for (const Case &tested : cases) {
        SCOPED_TRACE(tested.piece.toStdString());
        const ToolPiece piece = tested.read(tested.piece, u"long.wav"_s);
        EXPECT_EQ(piece.percentageText, tested.percentageText);
        EXPECT_EQ(piece.percentage.has_value(), !tested.percentageText.isEmpty());
        EXPECT_EQ(piece.percentage.value_or(0), tested.percentageText.toDouble());
        EXPECT_EQ(piece.detail, tested.detail);
        EXPECT_EQ(piece.failed, tested.failed);
    }
    EXPECT_EQ(TtaTool::read(u"\bx\b", u"").results, u"xx"_s);
}

} // namespace kruv::test
