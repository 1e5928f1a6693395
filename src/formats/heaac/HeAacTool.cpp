// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/heaac/HeAacTool.h"

#include "tasks/ToolOutput.h"

#include <QtGlobal>

namespace kruv::HeAacTool {

namespace {

constexpr OptionChoice rates[] = {{"24", "24"}, {"32", "32"}, {"48", "48"}, {"60", "60"}};

} // namespace

const FormatOption bitRate{.id = "bitrate",
                           .kind = FormatOption::Kind::Rate,
                           .label = QT_TRANSLATE_NOOP("FormatOption", "Bit rate, kbit/s"),
                           .help = QT_TRANSLATE_NOOP("FormatOption", "Bit rate in kbit/s; 60 when not given"),
                           .standard = 60,
                           .minimum = 8,
                           .maximum = 60,
                           .correction = 60,
                           .choices = rates,
                           .preferenceKey = "lossyComboLevel",
                           .controlName = "comboBox"};

/// Updates like "[ 38%]"; a reader that comes late gets several, and the newest counts.
ToolPiece read(QStringView piece, QStringView)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    const qsizetype end = text.lastIndexOf(u"%]");
    const qsizetype start = end < 0 ? -1 : text.left(end).lastIndexOf(u'[');
    ToolPiece result;
    if (start < 0) {
        result.results = u'\n' + text.toString();
        return result;
    }
    result.percentage = ToolOutput::leadingNumber(text.sliced(start + 1, end - start - 1));
    result.percentageText = QString::number(*result.percentage, 'f', 6);
    return result;
}

} // namespace kruv::HeAacTool
