// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Console.h"

#include "base/SystemError.h"

#include <QList>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cwchar>
#include <numeric>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace kruv::Console {

namespace {

/// Returns the system's error number, 0 where all was written.
int write(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    const bool whole = std::fwrite(bytes.constData(), 1, size, stream) == size;
    return whole && std::fflush(stream) == 0 ? 0 : errno;
}

int firstOutputError = 0; // main thread

/// One character and the terminal columns it takes: two in East Asian scripts, none for combining marks.
struct Cell
{
    QString text;
    int columns;
};

std::vector<Cell> cellsOf(const QString &text)
{
    std::vector<Cell> cells;
    for (const char32_t character : text.toUcs4()) {
        cells.push_back(
            {QString::fromUcs4(&character, 1), std::max(0, wcwidth(static_cast<wchar_t>(character)))});
    }
    return cells;
}

int columnsOf(const std::vector<Cell> &cells)
{
    return std::accumulate(cells.begin(), cells.end(), 0,
                           [](int sum, const Cell &cell) { return sum + cell.columns; });
}

} // namespace

void writeOut(const QString &text)
{
    const int error = write(stdout, text);
    firstOutputError = firstOutputError != 0 ? firstOutputError : error;
}

void writeError(const QString &text)
{
    write(stderr, text);
}

QString outputProblem()
{
    return firstOutputError == 0 || firstOutputError == EPIPE ? QString() : systemErrorText(firstOutputError);
}

void complain(const QString &line)
{
    writeError(QStringLiteral("kruv: ") + printable(line) + u'\n');
}

bool errorIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

TerminalSize errorSize()
{
    TerminalSize usual;
    winsize size = {};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
        return usual;
    }
    return {size.ws_col, size.ws_row};
}

QString elidedMiddle(const QString &text, int columns)
{
    std::vector<Cell> cells = cellsOf(text);
    int width = columnsOf(cells);
    if (width <= columns) {
        return text;
    }
    auto end = cells.begin() + static_cast<std::ptrdiff_t>(cells.size() / 2);
    auto start = end;
    for (; width > columns - 1 && (start != cells.begin() || end != cells.end());) {
        const bool fromStart = end == cells.end() || start - cells.begin() > cells.end() - end;
        width -= fromStart ? (--start)->columns : (end++)->columns;
    }
    QString shown;
    std::for_each(cells.begin(), start, [&shown](const Cell &cell) { shown += cell.text; });
    shown += columns > 0 ? QStringLiteral("…") : QString();
    std::for_each(end, cells.end(), [&shown](const Cell &cell) { shown += cell.text; });
    return shown;
}

QString printable(const QString &name)
{
    QString shown = name;
    for (QChar &character : shown) {
        if (character.category() == QChar::Other_Control) {
            character = u'?';
        }
    }
    return shown;
}

} // namespace kruv::Console
