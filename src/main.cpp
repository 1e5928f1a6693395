// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/LaunchArguments.h"
#include "cli/Program.h"
#include "platform/SignalWatcher.h"
#ifdef KRUV_HAS_WINDOW
#include "gui/WindowProgram.h"
#else
#include "cli/Console.h"
#include "cli/ExitStatus.h"
#endif

#include <QCoreApplication>
#include <QFile>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <langinfo.h>
#include <unistd.h>

namespace {

/// File names and tags are UTF-8 throughout; where the inherited locale is not, take one that is before Qt
/// looks.
void ensureUtf8Locale()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        unsetenv("LC_ALL");
        setenv("LC_CTYPE", "C.UTF-8", 1);
    }
}

/// Where a standard stream is closed, the first file that is opened would take its number, and what is said
/// there would end up in somebody's audio.
void keepStandardStreams()
{
    int descriptor = STDIN_FILENO;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = open("/dev/null", O_RDWR);
    }
    close(descriptor);
}

#ifdef KRUV_HAS_WINDOW
int openWindow(int argc, char **argv, const kruv::LaunchArguments &launch)
{
    return kruv::WindowProgram::run(argc, argv, {launch.tab, launch.paths, launch.inNewWindow});
}
#else
int openWindow(int, char **, const kruv::LaunchArguments &)
{
    kruv::Console::complain(
        QCoreApplication::translate("main", "this build has no window; kruv --help shows the commands"));
    return kruv::Usage;
}
#endif

} // namespace

int main(int argc, char **argv)
{
    kruv::SignalWatcher::ignoreQuestions();
    keepStandardStreams();
    ensureUtf8Locale();
    QCoreApplication::setApplicationName(QStringLiteral("kruv"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KRUV_VERSION));
    QStringList arguments;
    for (int index = 1; index < argc; ++index) {
        arguments.append(QFile::decodeName(argv[index]));
    }
    const auto launch = kruv::LaunchArguments::parse(arguments);
    if (launch.opensWindow) {
        return openWindow(argc, argv, launch);
    }
    const QCoreApplication application(argc, argv);
    return kruv::Program::run(argc, argv);
}
