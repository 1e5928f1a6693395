// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/FlacCommandLine.h"
#include "formats/flac/FlacOutput.h"
#include "support/Files.h"
#include "support/QtPrinters.h"
#include "tasks/ToolOutput.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

/// What one run of flac 1.4.2 printed, read by read. "*24 X" in a recording stands for 24 reads of X.
QStringList recorded(const QString &name)
{
    QStringList pieces;
    const QByteArray file = readFile(u"%1/flac-1.4.2/%2.txt"_s.arg(QStringLiteral(KRUV_TEST_DATA), name));
    for (QByteArray line : file.split('\n').mid(1)) {
        qsizetype times = 1;
        if (line.startsWith('*') && !line.startsWith("***")) {
            times = line.mid(1, line.indexOf(' ') - 1).toInt();
            line = line.mid(line.indexOf(' ') + 1);
        }
        line.replace("\\b", "\b").replace("\\n", "\n");
        if (!line.isEmpty()) {
            pieces += QStringList(times, QString::fromUtf8(line));
        }
    }
    EXPECT_FALSE(pieces.isEmpty()) << name.toStdString();
    return pieces;
}

/// The percentages a reader sees in a run, less repetitions.
template <typename Reader> QList<double> percentages(const QString &recording, Reader read)
{
    QList<double> seen;
    for (const QString &piece : recorded(recording)) {
        const std::optional<double> percentage = read(ToolOutput::cleaned(piece));
        if (percentage && (seen.isEmpty() || seen.last() != *percentage)) {
            seen.append(*percentage);
        }
    }
    return seen;
}

} // namespace

TEST(FlacCommandLine, EncodesWithEveryCombinationOfOptions)
{
    for (int bits = 0; bits < 8; ++bits) {
        const bool lax = bits & 1;
        const bool keep = bits & 2;
        const bool verify = bits & 4;
        const QStringList arguments =
            FlacCommandLine::encode({u"/m/-a b.wav"_s, u"/o/-a b.flac"_s, bits, lax, keep, verify});
        const QString expected = (lax ? u"--lax"_s : u"-%1"_s.arg(bits)) +
                                 (keep ? u"|--keep-foreign-metadata"_s : QString()) +
                                 (verify ? u"|-V"_s : QString()) + u"|/m/-a b.wav|-o|/o/-a b.flac"_s;
        EXPECT_EQ(arguments.join(u'|'), expected);
    }
}

TEST(FlacCommandLine, DecodesWithEveryCombinationOfOptions)
{
    for (int bits = 0; bits < 8; ++bits) {
        const QStringList arguments = FlacCommandLine::decode(
            {u"/m/a.flac"_s, u"/o/a.wav"_s, (bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0});
        const QString expected = u"-d"_s + (bits & 1 ? u"|--keep-foreign-metadata"_s : QString()) +
                                 (bits & 2 ? u"|-F"_s : QString()) +
                                 (bits & 4 ? u"|--force-aiff-format"_s : QString()) +
                                 u"|/m/a.flac|-o|/o/a.wav"_s;
        EXPECT_EQ(arguments.join(u'|'), expected);
    }
}

TEST(FlacOutput, ReadsTheProgressOfAnEncode)
{
    const auto reader = [](const QString &name) {
        return [name](QStringView piece) -> std::optional<double> {
            const auto progress = FlacOutput::encodeProgress(piece, name);
            EXPECT_TRUE(progress.percentageText.isEmpty() || progress.ratioText.startsWith(u"ratio=0.32"_s) ||
                        progress.percentage < 1.0);
            EXPECT_LE(progress.ratioText.size(), 11) << piece.toUtf8().constData();
            return progress.percentageText.isEmpty() ? std::nullopt : std::optional(progress.percentage);
        };
    };
    EXPECT_EQ(percentages(u"encode-progress"_s, reader(u"long.wav"_s)),
              (QList<double>{3, 6, 9, 12, 15, 18, 21, 94, 97, 100}));
    // Two updates in one read: the first of them counts. One behind a warning reads as 0, which is not shown.
    EXPECT_EQ(percentages(u"encode-joined"_s, reader(u"long.wav"_s)).mid(0, 5),
              (QList<double>{0, 6, 9, 12, 18}));
    const auto odd = percentages(u"encode-percent-name"_s, reader(u"50% off: live.wav"_s));
    EXPECT_EQ(odd.mid(0, 3), (QList<double>{0, 3, 6}));
    EXPECT_FALSE(odd.contains(50.0)) << "the name was read as progress";
}

TEST(FlacOutput, ReadsTheProgressOfADecode)
{
    const auto reader = [](const QString &name) {
        return [name](QStringView piece) { return FlacOutput::decodeProgress(piece, name); };
    };
    const auto plain = percentages(u"decode-progress"_s, reader(u"long.flac"_s));
    ASSERT_GE(plain.size(), 2);
    EXPECT_TRUE(std::is_sorted(plain.begin(), plain.end()));
    EXPECT_EQ(percentages(u"decode-joined"_s, reader(u"long.flac"_s)), (QList<double>{25, 51, 76}));
    EXPECT_FALSE(percentages(u"decode-percent-name"_s, reader(u"50% off: live.flac"_s)).contains(50.0));
    EXPECT_EQ(FlacOutput::decodeProgress(u"done", u"a.flac"), std::nullopt);
}

TEST(FlacOutput, SeesDamageThatTheToolPassesOver)
{
    const auto anyPiece = [](const QString &recording, auto says) {
        const QStringList pieces = recorded(recording);
        return std::any_of(pieces.begin(), pieces.end(),
                           [&](const QString &piece) { return says(ToolOutput::cleaned(piece)); });
    };
    const auto damage = [](QStringView piece) {
        return FlacOutput::reportsDamage(piece, u"ERROR, live.flac");
    };
    EXPECT_TRUE(anyPiece(u"decode-through-errors"_s, damage));
    EXPECT_TRUE(anyPiece(u"decode-short-no-md5"_s, damage));
    EXPECT_FALSE(anyPiece(u"decode-progress"_s, damage));
    EXPECT_FALSE(damage(u"details.\n\nERROR, live.flac: 12% complete"));

    EXPECT_TRUE(anyPiece(u"encode-truncated"_s, FlacOutput::reportsShortSource));
    EXPECT_TRUE(anyPiece(u"encode-short-flac"_s, FlacOutput::reportsShortSource));
    EXPECT_FALSE(anyPiece(u"encode-progress"_s, FlacOutput::reportsShortSource));
}

TEST(FlacOutput, CondensesTheReportOfATest)
{
    const auto reportOf = [](const QString &recording, const QString &name) {
        QString report;
        for (const QString &piece : recorded(recording)) {
            if (const QStringView clean = ToolOutput::cleaned(piece); !clean.isEmpty()) {
                report += FlacOutput::verifyReport(clean, name).lines;
            }
        }
        return FlacOutput::condensed(report, u"% complete");
    };
    const QString good = u"%1: testing, 100% complete\n%1: ok\n"_s;
    EXPECT_EQ(reportOf(u"verify-progress"_s, u"long.flac"_s), good.arg(u"long.flac"_s));
    EXPECT_EQ(reportOf(u"verify-joined"_s, u"long.flac"_s), good.arg(u"long.flac"_s));
    EXPECT_EQ(reportOf(u"verify-percent-name"_s, u"50% off: live.flac"_s), good.arg(u"50% off: live.flac"_s));
    const QString bad = reportOf(u"verify-damaged"_s, u"bad.flac"_s);
    EXPECT_TRUE(bad.startsWith(u"bad.flac: testing, 34.000000% complete\nbad.flac: *** Got error code"_s))
        << bad.toStdString();
    EXPECT_FALSE(bad.contains(u": ok"_s));
}

} // namespace kruv::test
