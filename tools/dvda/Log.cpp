// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Log.h"

#include <unistd.h>

namespace kruv::dvda {
namespace {

void print(int descriptor, const std::string &text)
{
    // A caller that has gone away does not stop the work.
    [[maybe_unused]] const ssize_t ignored = ::write(descriptor, text.data(), text.size());
}

} // namespace

Log::Log(const std::string &path)
{
    if (path.empty()) {
        return;
    }
    m_file.open(path, std::ios::app);
    if (!m_file) {
        print(STDERR_FILENO, "dvda: cannot write the log file " + path + "\n");
    }
}

void Log::note(const std::string &line)
{
    if (m_file.is_open()) {
        m_file << line << std::endl;
    }
}

void Log::progress(const std::string &line)
{
    note(line);
    print(STDOUT_FILENO, line + "\n");
}

void Log::warn(const std::string &line)
{
    note(line);
    print(STDERR_FILENO, "dvda: " + line + "\n");
}

} // namespace kruv::dvda
