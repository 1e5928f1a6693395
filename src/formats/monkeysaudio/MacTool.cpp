// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/monkeysaudio/MacTool.h"

#include "formats/FormatOption.h"
#include "tasks/ToolOutput.h"

namespace kruv::MacTool {

const FormatOption level{
    .id = "level",
    .kind = FormatOption::Kind::Number,
    .label = QT_TRANSLATE_NOOP("FormatOption", "&Level"),
    .help = QT_TRANSLATE_NOOP("FormatOption", "1000 (fast) to 5000 (small), 2000 when not given"),
    .standard = 2000,
    .minimum = 1000,
    .maximum = 5000,
    .step = 1000,
    .controlName = "apeSlider"};

QStringList compress(const ToolRequest &request)
{
    return {request.input, request.output, QStringLiteral("-c%1").arg(request.options.number(level))};
}

QStringList extract(const ToolRequest &request)
{
    return {request.input, request.output, QStringLiteral("-d")};
}

ToolPiece read(QStringView piece, QStringView name)
{
    constexpr QStringView progress = u"Progress: ";
    ToolPiece result;
    // The newest update that is whole.
    const qsizetype end = piece.lastIndexOf(QStringLiteral(" seconds remaining, "));
    const qsizetype start = end < 0 ? -1 : piece.left(end).lastIndexOf(progress);
    if (start >= 0) {
        const QStringView update = piece.sliced(start + progress.size()).chopped(piece.size() - end);
        const qsizetype percent = update.indexOf(u'%');
        const qsizetype seconds = update.indexOf(u" (");
        if (percent >= 0 && seconds > percent) {
            result.percentageText = update.left(percent).toString();
            result.percentage = ToolOutput::leadingNumber(update.left(percent));
            result.detail = update.sliced(seconds + 2).toString();
        }
    }
    result.failed = piece.contains(u"Error: 10") || piece.contains(u"Error: 2000") ||
                    ToolOutput::says(piece, u"the input ends before the audio", name);
    result.results = piece.toString();
    return result;
}

} // namespace kruv::MacTool
