// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/CdOutput.h"

#include <QRegularExpression>

namespace kruv::CdOutput {

QString stripPercent(const QString &piece)
{
    static const QRegularExpression percentAtEnd(QStringLiteral("[0-9]+%$"));
    QString text = piece;
    text.remove(percentAtEnd);
    while (text.endsWith(u'\n') || text.endsWith(u'\r')) {
        text.chop(1);
    }
    return text;
}

QStringList percentages(QStringView piece)
{
    QStringList found;
    for (const QString &word : piece.toString().simplified().split(u' ')) {
        if (const auto sign = word.indexOf(u'%'); sign >= 0) {
            found.append(word.left(sign));
        }
    }
    return found;
}

QString logText(const QString &output)
{
    const auto start = output.indexOf(QStringLiteral("cdda2wav:"));
    return start < 0 ? output : output.mid(start);
}

int TrackEnds::count(const QString &piece)
{
    static const QRegularExpression summary(QStringLiteral("[0-9]+ rderr, [0-9]+ skip, [0-9]+ atom"));
    m_line += piece;
    int ends = 0;
    for (auto match = summary.match(m_line); match.hasMatch(); match = summary.match(m_line)) {
        ++ends;
        m_line.remove(0, match.capturedEnd());
    }
    m_line.remove(0, m_line.lastIndexOf(u'\n') + 1);
    return ends;
}

} // namespace kruv::CdOutput
