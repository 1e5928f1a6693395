// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <fstream>
#include <string>

namespace kruv::dvda {

/// What happens, line by line, for the log file; some of it for the terminal or the caller's pipe too.
class Log
{
public:
    /// Appends to @p path; empty = no log file. One that cannot be written is only worth a warning.
    explicit Log(const std::string &path);

    /// Into the log file only.
    void note(const std::string &line);
    /// Into the log file and to standard output, in one write.
    void progress(const std::string &line);
    /// Into the log file and to standard error.
    void warn(const std::string &line);

private:
    std::ofstream m_file;
};

} // namespace kruv::dvda
