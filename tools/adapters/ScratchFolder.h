// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kruv::adapters {

/// A private folder that is removed with all it holds when the object goes away.
class ScratchFolder
{
public:
    /// Makes ".kruv-XXXXXX" inside `parent`. Without success path() is empty.
    explicit ScratchFolder(const std::string &parent);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder &) = delete;
    ScratchFolder &operator=(const ScratchFolder &) = delete;

    const std::string &path() const { return m_path; }
    explicit operator bool() const { return !m_path.empty(); }

    /// Where programs keep temporary files: TMPDIR, else /tmp.
    static std::string temporaryParent();

private:
    std::string m_path;
};

/// Makes every missing folder above `path`. False on failure.
bool makeFoldersAbove(const std::string &path);

/// Moves a file to its final place on the same file system. Unless `replace` is set, an existing file there
/// is left alone, also one that appears at the last moment. False on failure, errno set (EEXIST).
bool moveIntoPlace(const std::string &from, const std::string &to, bool replace);

} // namespace kruv::adapters
