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

    /// The line that is being written. Empty where it grows beyond what a line is, so that looking at it
    /// after each piece costs little whatever a tool prints.
    QString currentLine() const;
    /// All lines, without blanks at their ends.
    QString text() const;

private:
    void write(QStringView run);
    void endLine();

    QString m_finished; // lines, each with its break
    QString m_line;
    qsizetype m_cursor = 0;
};

} // namespace kruv
