// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

namespace kruv {

/// What a tool's output looks like on a terminal: a carriage return goes back to the line's start, a
/// backspace one character back, and what follows overwrites. Progress that was drawn over is gone, so the
/// text stays short however long the tool runs, and however the reads cut it.
class TerminalText
{
public:
    void append(QStringView piece);

    /// Lines that a line break has ended, each with its break, without blanks at their ends.
    const QString &finishedLines() const { return m_finished; }
    /// The line that is being written.
    const QString &currentLine() const { return m_line; }
    /// Both together.
    QString text() const;

private:
    void endLine();

    QString m_finished;
    QString m_line;
    qsizetype m_cursor = 0;
};

} // namespace kruv
