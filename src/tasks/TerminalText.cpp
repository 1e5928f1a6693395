// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/TerminalText.h"

#include "tasks/KruvTaskResults.h"

#include <algorithm>

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
    while (!piece.isEmpty()) {
        const auto *const control = std::ranges::find_if(piece, [](QChar character) {
            return character == u'\n' || character == u'\r' || character == u'\b';
        });
        write(piece.first(control - piece.begin()));
        if (control == piece.end()) {
            return;
        }
        if (*control == u'\n') {
            endLine();
        } else {
            m_cursor = *control == u'\r' ? 0 : std::max<qsizetype>(m_cursor - 1, 0);
        }
        piece = piece.sliced(control - piece.begin() + 1);
    }
}

void TerminalText::write(QStringView run)
{
    const qsizetype drawnOver = std::min(run.size(), m_line.size() - m_cursor);
    std::ranges::copy(run.first(drawnOver), m_line.begin() + m_cursor);
    const qsizetype room = KruvTaskResults::maxTextLength - m_line.size();
    const qsizetype added = std::clamp<qsizetype>(run.size() - drawnOver, 0, std::max<qsizetype>(room, 0));
    m_line += run.sliced(drawnOver, added);
    m_cursor += drawnOver + added;
}

QString TerminalText::currentLine() const
{
    constexpr qsizetype longestLine = qsizetype(16) * 1024; // a few paths
    return m_line.size() > longestLine ? QString() : m_line;
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
