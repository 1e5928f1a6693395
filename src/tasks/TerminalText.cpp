// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/TerminalText.h"

#include "tasks/KruvTaskResults.h"

namespace kruv {

namespace {

QStringView withoutTrailingBlanks(QStringView line)
{
    while (line.endsWith(u' ')) {
        line.chop(1);
    }
    return line;
}

} // namespace

void TerminalText::append(QStringView piece)
{
    for (const QChar character : piece) {
        if (character == u'\n') {
            endLine();
        } else if (character == u'\r') {
            m_cursor = 0;
        } else if (character == u'\b') {
            m_cursor = qMax<qsizetype>(m_cursor - 1, 0);
        } else if (m_cursor < m_line.size()) {
            m_line[m_cursor++] = character;
        } else if (m_line.size() < KruvTaskResults::maxTextLength) {
            m_line += character;
            ++m_cursor;
        }
    }
}

void TerminalText::endLine()
{
    if (m_finished.size() < KruvTaskResults::maxTextLength) {
        m_finished += withoutTrailingBlanks(m_line);
        m_finished += u'\n';
    }
    m_line.clear();
    m_cursor = 0;
}

QString TerminalText::text() const
{
    return m_finished + withoutTrailingBlanks(m_line).toString();
}

} // namespace kruv
