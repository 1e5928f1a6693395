// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolOutput.h"

namespace kruv::ToolOutput {

QStringView withoutBackspaces(QStringView piece)
{
    while (piece.startsWith(u'\b')) {
        piece = piece.sliced(1);
    }
    while (piece.endsWith(u'\b')) {
        piece.chop(1);
    }
    return piece;
}

QStringView cleaned(QStringView piece)
{
    return withoutBackspaces(piece).trimmed();
}

QStringView withoutLeadingName(QStringView piece, QStringView name)
{
    if (!name.isEmpty() && piece.startsWith(name) && piece.sliced(name.size()).startsWith(u':')) {
        return piece.sliced(name.size() + 1).trimmed();
    }
    return piece;
}

bool says(QStringView piece, QStringView words, QStringView name)
{
    return piece.contains(words) && !name.contains(words);
}

double leadingNumber(QStringView text)
{
    text = text.trimmed();
    qsizetype length = 0;
    while (length < text.size() && QStringView(u"+-.0123456789").contains(text[length])) {
        ++length;
    }
    return text.left(length).toDouble();
}

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
    return leadingNumber(piece.sliced(start, percent - start));
}

QStringView percentageText(QStringView piece)
{
    constexpr QStringView separator = u": ";
    const qsizetype colon = piece.indexOf(separator);
    const QStringView rest = colon < 0 ? piece : piece.sliced(colon + separator.size());
    const qsizetype percent = rest.indexOf(u'%');
    return percent < 0 ? rest : rest.left(percent);
}

} // namespace kruv::ToolOutput
