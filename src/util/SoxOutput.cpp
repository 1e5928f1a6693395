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

void Reader::read(QStringView piece)
{
    m_line += piece;
    if (std::ranges::any_of(shortEnds, [this](QStringView text) { return m_line.contains(text); })) {
        m_problem = m_line.trimmed();
    }
    m_line.remove(0, std::max(m_line.lastIndexOf(u'\n'), m_line.lastIndexOf(u'\r')) + 1);
}

} // namespace kruv::SoxOutput
