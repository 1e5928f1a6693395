// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Console.h"

#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace kruv::Console {

namespace {

void write(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

} // namespace

void writeOut(const QString &text)
{
    write(stdout, text);
}

void writeError(const QString &text)
{
    write(stderr, text);
}

void complain(const QString &line)
{
    writeError(QStringLiteral("kruv: ") + line + u'\n');
}

bool errorIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

int errorWidth()
{
    constexpr int usual = 80;
    winsize size = {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
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
