// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/LossyOutput.h"

#include "tasks/ToolOutput.h"

namespace kruv::LossyOutput {

namespace {

/// The number that stands directly before the piece's last "%".
std::optional<double> lastPercentage(QStringView piece)
{
    const qsizetype percent = piece.lastIndexOf(u'%');
    qsizetype start = percent;
    while (start > 0 && (piece[start - 1].isDigit() || piece[start - 1] == u'.')) {
        --start;
    }
    if (percent < 0 || start == percent) {
        return std::nullopt;
    }
    return ToolOutput::leadingNumber(piece.sliced(start, percent - start));
}

} // namespace

std::optional<double> lame(QStringView piece)
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

std::optional<double> aacplusenc(QStringView piece)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    const qsizetype end = text.lastIndexOf(u"%]");
    const qsizetype start = end < 0 ? -1 : text.left(end).lastIndexOf(u'[');
    if (start < 0) {
        return std::nullopt;
    }
    return ToolOutput::leadingNumber(text.sliced(start + 1, end - start - 1));
}

std::optional<double> opusenc(QStringView piece)
{
    const qsizetype drawing = piece.lastIndexOf(u"] "); // a bar that turns: [|] [/] [-]
    const QStringView update = drawing < 0 ? QStringView() : piece.sliced(drawing);
    return lastPercentage(update.left(update.indexOf(u'%') + 1));
}

std::optional<double> shntool(QStringView piece)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    // Names of files stand before the last ": " and may have a "%" of their own.
    const qsizetype names = text.lastIndexOf(u": ");
    return lastPercentage(names < 0 ? text : text.sliced(names));
}

} // namespace kruv::LossyOutput
