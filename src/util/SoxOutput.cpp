// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/SoxOutput.h"

#include <algorithm>
#include <array>

namespace kruv::SoxOutput {

namespace {

constexpr std::array<QStringView, 3> shortEnds{
    u"Premature EOF",
    u"error writing output file",
    u"No space left on device",
};

} // namespace

std::optional<double> percentage(QStringView piece)
{
    constexpr QStringView marker = u"In:";
    const qsizetype sign = piece.lastIndexOf(u'%');
    const qsizetype start = sign < 0 ? -1 : piece.first(sign).lastIndexOf(marker);
    if (start < 0) {
        return std::nullopt;
    }
    bool isNumber = false;
    const double value = piece.sliced(start, sign - start).sliced(marker.size()).toDouble(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

bool isDone(QStringView piece)
{
    return piece.trimmed().endsWith(u"Done.") || piece.contains(u"100%");
}

QStringList Messages::read(QStringView piece)
{
    QStringList complete;
    m_line += piece;
    for (qsizetype end = m_line.indexOf(u'\n'); end >= 0; end = m_line.indexOf(u'\n')) {
        const QString line = m_line.left(end).trimmed();
        m_line.remove(0, end + 1);
        // Progress may stand before it in the same line.
        const qsizetype start = std::max(line.lastIndexOf(u"sox WARN "), line.lastIndexOf(u"sox FAIL "));
        if (start < 0) {
            continue;
        }
        complete.append(line.mid(start));
        if (std::ranges::any_of(shortEnds, [&line](QStringView text) { return line.contains(text); })) {
            m_shortEnd = line.mid(start);
        }
    }
    return complete;
}

} // namespace kruv::SoxOutput
