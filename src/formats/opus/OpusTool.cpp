// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/opus/OpusTool.h"

#include "formats/RateOptions.h"
#include "tasks/ToolOutput.h"

namespace kruv::OpusTool {

namespace {

using Kind = FormatOption::Kind;

constexpr OptionChoice modes[] = {RateOptions::cbr, RateOptions::vbrConstrained, RateOptions::vbr};
constexpr OptionChoice frameSizes[] = {{"2.5", "2.5"}, {"5", "5"},   {"10", "10"},
                                       {"20", "20"},   {"40", "40"}, {"60", "60"}};
constexpr const char *modeFlags[] = {"--hard-cbr", "--cvbr", "--vbr"};

} // namespace

constinit const FormatOption mode = RateOptions::mode(modes, "opusMatrix");
constinit const FormatOption bitRate = RateOptions::bitRate(80, 512, 256);
const FormatOption frameSize{
    .id = "frame-size",
    .kind = Kind::Choice,
    .label = QT_TRANSLATE_NOOP("FormatOption", "Frame size, ms"),
    .help = QT_TRANSLATE_NOOP("FormatOption", "Opus frame size in ms; 20 when not given"),
    .standard = 3,
    .choices = frameSizes,
    .preferenceKey = "opusFrameSizeIndex",
    .controlName = "opusFrameSizeCombo"};

QStringList encode(const ToolRequest &request, const QString &title, const QString &artist)
{
    const OptionValues &options = request.options;
    QStringList arguments{QString::fromLatin1(modeFlags[options.number(mode)]), QStringLiteral("--bitrate"),
                          QString::number(options.number(bitRate)), QStringLiteral("--framesize"),
                          options.choice(frameSize)};
    if (!title.isEmpty()) {
        arguments << QStringLiteral("--title") << title;
    }
    if (!artist.isEmpty()) {
        arguments << QStringLiteral("--artist") << artist;
    }
    return arguments << request.input << request.output;
}

ToolPiece read(QStringView piece, QStringView)
{
    ToolPiece result;
    const qsizetype drawing = piece.lastIndexOf(u"] "); // a bar that turns: [|] [/] [-]
    const QStringView update = drawing < 0 ? QStringView() : piece.sliced(drawing);
    result.percentage = ToolOutput::lastPercentage(update.left(update.indexOf(u'%') + 1));
    result.results = ToolOutput::withoutBackspaces(piece).toString();
    return result;
}

} // namespace kruv::OpusTool
