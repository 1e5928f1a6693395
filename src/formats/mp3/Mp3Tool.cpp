// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/mp3/Mp3Tool.h"

#include "base/PathNames.h"
#include "formats/RateOptions.h"
#include "tasks/ToolOutput.h"

namespace kruv::Mp3Tool {

namespace {

using Kind = FormatOption::Kind;

constexpr OptionChoice modes[] = {RateOptions::cbr, RateOptions::abr, RateOptions::vbr};

/// lame's option for the rate mode, with its dashes.
QString modeOption(const QString &chosen)
{
    if (chosen == u"abr") {
        return QStringLiteral("--abr");
    }
    return chosen == u"cbr" ? QStringLiteral("-b") : QStringLiteral("-V");
}

QString level(const OptionValues &options)
{
    return QString::number(options.number(options.choice(mode) == u"vbr" ? quality : bitRate));
}

QString stereoWord(const Tuning &tuning)
{
    return tuning.jointStereo ? QStringLiteral("j") : QStringLiteral("s");
}

/// Of the newest update that the piece has.
std::optional<double> percentageIn(QStringView piece)
{
    constexpr qsizetype firstPlace = 5;
    constexpr qsizetype width = 4; // "( 1%", "(13%" or "100%"
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    const qsizetype marker = text.lastIndexOf(u"%)|");
    if (marker < firstPlace) {
        return std::nullopt;
    }
    QStringView number = text.sliced(marker - width + 1, width);
    while (!number.isEmpty() && number.front().isPunct()) {
        number = number.sliced(1);
    }
    return ToolOutput::leadingNumber(number);
}

} // namespace

constinit const FormatOption mode = RateOptions::mode(modes, "mp3Matrix");
constinit const FormatOption bitRate = RateOptions::bitRate(80, 320, 256, &mode, "cbr abr");
const FormatOption quality{
    .id = "quality",
    .kind = Kind::Number,
    .label = QT_TRANSLATE_NOOP("FormatOption", "Quality, 0 to 9"),
    .help = QT_TRANSLATE_NOOP("FormatOption", "Quality in mode vbr, 0 (best) to 9, 3 when not given"),
    .standard = 3,
    .maximum = 9,
    .preferenceKey = "lossySliderLevel",
    .controlName = "slider",
    .dependsOn = &mode,
    .onlyFor = "vbr"};

QStringList encode(const ToolRequest &request, const Tuning &tuning)
{
    return {QStringLiteral("--brief"),
            QStringLiteral("-m"),
            stereoWord(tuning),
            QStringLiteral("-q"),
            QString::number(tuning.qValue),
            modeOption(request.options.choice(mode)),
            level(request.options),
            request.input,
            request.output};
}

QStringList encodeByShntool(const ToolRequest &request, const Tuning &tuning)
{
    const QString encoder = QStringLiteral("cust ext=mp3 lame -m %1 -q %2 %3 %4 - %f")
                                .arg(stereoWord(tuning), QString::number(tuning.qValue),
                                     modeOption(request.options.choice(mode)), level(request.options));
    return {QStringLiteral("conv"),
            QStringLiteral("-P"),
            QStringLiteral("pct"),
            QStringLiteral("-O"),
            QStringLiteral("never"),
            QStringLiteral("-o"),
            encoder,
            QStringLiteral("-d"),
            PathNames::folderOf(request.output),
            QStringLiteral("-n"),
            request.output,
            request.input};
}

ToolPiece read(QStringView piece, QStringView)
{
    ToolPiece result;
    result.percentage = percentageIn(piece);
    if (result.percentage) {
        result.percentageText = QString::number(*result.percentage, 'f', 6);
    }
    result.results = ToolOutput::withoutBackspaces(piece).toString();
    return result;
}

} // namespace kruv::Mp3Tool
