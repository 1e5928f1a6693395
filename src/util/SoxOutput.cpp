// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/SoxOutput.h"

#include <QRegularExpression>

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

QString percentageText(const QString &piece)
{
    // Warnings name files, and those may hold anything.
    static const QRegularExpression update(QStringLiteral("\\bIn:([^\\s%]*)%"));
    QString latest;
    for (const auto &match : update.globalMatch(piece)) {
        latest = match.captured(1);
    }
    return latest;
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
