// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ScratchFolder.h"

#include "File.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

int removeEntry(const char *path, const struct stat *, int, struct FTW *)
{
    remove(path);
    return 0;
}

} // namespace

ScratchFolder::ScratchFolder(const std::string &parent)
    : m_path(parent + (parent.ends_with('/') ? "" : "/") + ".kruv-XXXXXX")
{
    if (!mkdtemp(m_path.data())) {
        m_path.clear();
    }
}

ScratchFolder::~ScratchFolder()
{
    // A tool that is just ending may still add a file behind our back: look again a few times.
    constexpr int attempts = 5;
    constexpr int openFolders = 16;
    for (int i = 0; i < attempts && !m_path.empty(); ++i) {
        nftw(m_path.c_str(), removeEntry, openFolders, FTW_DEPTH | FTW_PHYS);
        if (!fileExists(m_path)) {
            return;
        }
        usleep(20000);
    }
}

std::string ScratchFolder::temporaryParent()
{
    const char *folder = getenv("TMPDIR");
    return folder && isFolder(folder) ? folder : "/tmp";
}

bool makeFoldersAbove(const std::string &path)
{
    constexpr mode_t ownerOnly = 0700;
    for (auto slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        if (mkdir(path.substr(0, slash).c_str(), ownerOnly) != 0 && errno != EEXIST) {
            return false;
        }
    }
    return true;
}

bool moveIntoPlace(const std::string &from, const std::string &to, bool replace)
{
    if (replace) {
        return rename(from.c_str(), to.c_str()) == 0;
    }
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) {
        return false;
    }
    // File systems without that operation: take the name first, then replace our own empty file.
    constexpr mode_t ownerOnly = 0600;
    const File reserved(open(to.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, ownerOnly));
    return reserved && rename(from.c_str(), to.c_str()) == 0;
}

} // namespace kruv::adapters
