// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/TestSignals.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kruv::tools::test {

/// A new folder that removes itself with everything in it.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    std::string path(const std::string &name) const { return (m_path / name).string(); }
    std::string write(const std::string &name, const Bytes &bytes) const;
    /// The names in the folder, sorted.
    std::vector<std::string> names() const;

private:
    std::filesystem::path m_path;
};

Bytes readFile(const std::string &path);

struct ProcessResult
{
    int status = -1; ///< exit status, or 128 + signal
    Bytes output;
    std::string errors;
};

/// Runs a program of the resources folder, or of PATH where that folder has none of this name.
ProcessResult run(const std::string &program, const std::vector<std::string> &arguments,
                  const Bytes &input = {});
/// The same with /dev/null as input and the output going to that file.
ProcessResult runInto(const std::string &outputPath, const std::string &program,
                      const std::vector<std::string> &arguments);

/// The audio of a file as ffmpeg decodes it, checking checksums, in a raw format such as "s16le".
Bytes decodeWithFfmpeg(const std::string &path, const std::string &rawFormat);
const char *rawFormatFor(const WavFormat &format);

} // namespace kruv::tools::test
