// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ToolMain.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <new>
#include <unistd.h>

namespace kruv::tools {

namespace {

// With a standard stream closed, the next file opened would get its number, and messages would end up in the
// audio. What stands in fails when used, as the closed stream would.
void keepStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0) {
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

} // namespace

void prepareProcess()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    keepStandardStreams();
}

int toolMain(const char *program, const std::function<int()> &body)
{
    prepareProcess();
    try {
        return body();
    } catch (const std::bad_alloc &) {
        std::fprintf(stderr, "%s: not enough memory\n", program);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s: %s\n", program, error.what());
    }
    return 1;
}

} // namespace kruv::tools
