// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/tta/TtaTool.h"

#include "tasks/ToolOutput.h"

namespace kruv::TtaTool {

QStringList convert(const ToolRequest &request)
{
    return {request.input, QStringLiteral("-o"), request.output};
}

ToolPiece read(QStringView piece, QStringView name)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    constexpr QStringView marker = u"Percent Progress: ";
    ToolPiece result;
    if (const qsizetype at = text.lastIndexOf(marker); at >= 0) {
        result.percentage = ToolOutput::leadingNumber(text.sliced(at + marker.size()));
        result.percentageText = QString::number(*result.percentage, 'f', 6);
    }
    result.failed = ToolOutput::says(text, u"has less audio than its header states", name);
    result.results = text.toString().repeated(2);
    return result;
}

} // namespace kruv::TtaTool
