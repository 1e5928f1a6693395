// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/Priority.h"

#include <algorithm>
#include <cerrno>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kruv {

void Priority::giveWay()
{
    constexpr int niceness = 10;
    // As ioprio_set(2) has them; the C library doesn't.
    constexpr int ofProcess = 1;
    constexpr int bestEffort = 2;
    constexpr int classShift = 13;
    constexpr int last = 7;
    errno = 0;
    const int now = getpriority(PRIO_PROCESS, 0);
    if (errno == 0) {
        setpriority(PRIO_PROCESS, 0, std::max(now, niceness));
    }
    syscall(SYS_ioprio_set, ofProcess, 0, bestEffort << classShift | last);
}

} // namespace kruv
