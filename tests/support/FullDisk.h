// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <csignal>
#include <sys/resource.h>

namespace kruv::test {

/// While it lives, files of this process and of those it starts can't grow beyond `bytes`: writing fails as
/// it does on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        m_signal = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_before = {};
    void (*m_signal)(int) = nullptr;
};

} // namespace kruv::test
