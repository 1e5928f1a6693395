// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/Program.h"

#include <QCoreApplication>

#include <clocale>
#include <cstdlib>
#include <cstring>

#include <langinfo.h>

namespace {

/// File names and tags are UTF-8 throughout; where the inherited locale is not, take one that is before Qt looks.
void ensureUtf8Locale()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        unsetenv("LC_ALL");
        setenv("LC_CTYPE", "C.UTF-8", 1);
    }
}

} // namespace

int main(int argc, char **argv)
{
    ensureUtf8Locale();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kruv"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KRUV_VERSION));
    return kruv::Program::run(argc, argv);
}
