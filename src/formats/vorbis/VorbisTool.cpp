// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/vorbis/VorbisTool.h"

#include "formats/RateOptions.h"
#include "tasks/ToolOutput.h"

namespace kruv::VorbisTool {

namespace {

using Kind = FormatOption::Kind;

constexpr OptionChoice modes[] = {RateOptions::vbr, RateOptions::abr};

} // namespace

const FormatOption mode{.id = "mode",
                        .kind = Kind::Choice,
                        .label = QT_TRANSLATE_NOOP("FormatOption", "Mode"),
                        .help = QT_TRANSLATE_NOOP("FormatOption", "Rate mode; vbr when not given"),
                        .choices = modes};
constinit const FormatOption bitRate = RateOptions::bitRate(45, 500, 160, &mode, "abr");
const FormatOption quality{
    .id = "quality",
    .kind = Kind::Number,
    .label = QT_TRANSLATE_NOOP("FormatOption", "&Quality"),
    .help = QT_TRANSLATE_NOOP("FormatOption", "Quality in mode vbr, -1 to 10 (best), 5 when not given"),
    .standard = 5,
    .minimum = -1,
    .maximum = 10,
    .preferenceKey = "vorbisQuality",
    .controlName = "vorbisQuality",
    .dependsOn = &mode,
    .onlyFor = "vbr"};

QStringList encode(const ToolRequest &request)
{
    const bool byQuality = request.options.choice(mode) == u"vbr";
    return {byQuality ? QStringLiteral("-q") : QStringLiteral("-b"),
            QString::number(request.options.number(byQuality ? quality : bitRate)), QStringLiteral("-o"),
            request.output, request.input};
}

/// Updates like "[ 48.8%] [ 0m00s remaining] |"; a reader that comes late gets several, and the newest
/// counts.
ToolPiece read(QStringView piece, QStringView)
{
    ToolPiece result;
    const qsizetype end = piece.lastIndexOf(u"%] [");
    const qsizetype start = end < 0 ? -1 : piece.first(end).lastIndexOf(u'[');
    if (start >= 0) {
        result.percentage = ToolOutput::leadingNumber(piece.sliced(start + 1, end - start - 1));
        result.percentageText = QString::number(*result.percentage, 'f', 0);
    } else {
        result.results = piece.toString();
    }
    return result;
}

} // namespace kruv::VorbisTool
