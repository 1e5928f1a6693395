// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ToolMain.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <new>

namespace kruv::tools {

int toolMain(const char *program, const std::function<int()> &body)
{
    std::signal(SIGPIPE, SIG_IGN);
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
