// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/SpaceCheck.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace kruv {

namespace {

QString size(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

QString SpaceCheck::nearest(const QString &folder)
{
    QString there = folder;
    while (!QFileInfo::exists(there) && there.size() > 1) {
        there = QFileInfo(there).path();
    }
    return there;
}

void SpaceCheck::addOutput(const QString &folder, qint64 bytes)
{
    auto known = m_diskOf.find(folder);
    if (known == m_diskOf.end()) {
        const QString there = nearest(folder);
        struct stat status = {};
        if (stat(QFile::encodeName(there).constData(), &status) != 0) {
            return; // the jobs say so
        }
        known = m_diskOf.emplace(folder, status.st_dev).first;
        Disk &disk = m_disks[status.st_dev];
        disk.folder = disk.folder.isEmpty() ? there : disk.folder;
    }
    Disk &disk = m_disks[known->second];
    disk.bytes += bytes;
    disk.largest = std::max(disk.largest, bytes);
}

void SpaceCheck::addFreed(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) == 0 && status.st_nlink == 1) {
        m_disks[status.st_dev].freed += status.st_size;
    }
}

QStringList SpaceCheck::shortages() const
{
    QStringList sentences;
    for (const auto &[device, disk] : m_disks) {
        struct statvfs volume = {};
        if (disk.bytes == 0 || statvfs(QFile::encodeName(disk.folder).constData(), &volume) != 0 ||
            volume.f_blocks == 0) { // of some file systems nothing is known
            continue;
        }
        // A new file is whole before an old one goes.
        const qint64 needed = std::max(disk.bytes - disk.freed, disk.largest);
        const auto available = static_cast<qint64>(volume.f_bavail) * static_cast<qint64>(volume.f_frsize);
        if (needed > available) {
            sentences.append(tr("The disk of %1 has %2 left, and about %3 are needed: %4 are missing.")
                                 .arg(disk.folder, size(available), size(needed), size(needed - available)));
        }
    }
    return sentences;
}

} // namespace kruv
