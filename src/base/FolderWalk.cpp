// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/FolderWalk.h"

#include "base/PathNames.h"
#include "base/StagingName.h"

#include <QFile>

#include <dirent.h>
#include <memory>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace kruv {

namespace {

bool isPassedOver(QStringView name)
{
    return name == u".DS_Store" || name == u".TOC.plist" || StagingName::isTemporaryFile(name);
}

/// DT_DIR, DT_REG and so on of what a link leads to; DT_UNKNOWN where it leads nowhere.
unsigned char typeBehind(const QByteArray &path)
{
    struct stat status = {};
    if (stat(path.constData(), &status) != 0) {
        return DT_UNKNOWN;
    }
    return static_cast<unsigned char>(IFTODT(status.st_mode));
}

/// Opening one could wait for ever.
bool isPipeOrDevice(unsigned char type)
{
    return type == DT_FIFO || type == DT_SOCK || type == DT_CHR || type == DT_BLK;
}

} // namespace

class FolderWalk::Visited
{
public:
    /// False when this real folder was seen before.
    bool enter(int descriptor)
    {
        struct stat status = {};
        return fstat(descriptor, &status) == 0 && m_seen.emplace(status.st_dev, status.st_ino).second;
    }

private:
    std::set<std::pair<dev_t, ino_t>> m_seen;
};

void FolderWalk::walk(const QString &path, const Visitor &visit)
{
    const QByteArray bytes = QFile::encodeName(path);
    if (const unsigned char type = typeBehind(bytes); type != DT_DIR) {
        if (!isPipeOrDevice(type) && !isPassedOver(PathNames::lastPathComponent(path))) {
            visit(path);
        }
        return;
    }
    m_folders.append(path);
    m_visited = std::make_shared<Visited>();
    walkFolder(bytes.endsWith('/') && bytes.size() > 1 ? bytes.chopped(1) : bytes, visit);
    // A folder is seen by its own name, where it has one here.
    while (!m_links.isEmpty()) {
        walkFolder(m_links.takeFirst(), visit);
    }
}

void FolderWalk::walkFolder(const QByteArray &folder, const Visitor &visit)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> stream(opendir(folder.constData()), closedir);
    if (!stream) {
        m_unreadableFolders.append(QFile::decodeName(folder));
        return;
    }
    if (!m_visited->enter(dirfd(stream.get()))) {
        return;
    }
    const dirent *entry = nullptr;
    while (!m_stop.stop_requested() && (entry = readdir(stream.get())) != nullptr) {
        const std::string_view name(entry->d_name);
        if (name != "." && name != "..") {
            visitEntry(folder, entry->d_name, entry->d_type, visit);
        }
    }
}

void FolderWalk::visitEntry(const QByteArray &folder, const char *name, unsigned char type,
                            const Visitor &visit)
{
    const QByteArray path = folder == "/" ? folder + name : folder + '/' + name;
    const QString text = QFile::decodeName(path);
    if (text.contains(QChar::ReplacementCharacter) && QFile::encodeName(text) != path) {
        m_undecodableNames.append(text);
        return;
    }
    if (StagingName::isFolder(QFile::decodeName(name))) {
        return; // what a job is making, or what is left of one
    }
    const bool isLink = type == DT_LNK;
    if (isLink || type == DT_UNKNOWN) {
        type = typeBehind(path);
    }
    if (type == DT_DIR && isLink) {
        m_links.append(path);
    } else if (type == DT_DIR) {
        walkFolder(path, visit);
    } else if (!isPipeOrDevice(type) && !isPassedOver(QFile::decodeName(name))) {
        visit(text);
    }
}

} // namespace kruv
