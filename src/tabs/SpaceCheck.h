// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <map>
#include <sys/types.h>

namespace kruv {

/// Whether what a command makes has room on the disks that it goes to.
class SpaceCheck
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SpaceCheck)
public:
    /// So many bytes will be written in that folder, which may not be there yet.
    void addOutput(const QString &folder, qint64 bytes);
    /// A file that will be gone in the end, of which nothing else holds the bytes.
    void addFreed(const QString &path);

    /// A sentence for each disk that is too small, with what is missing.
    QStringList shortages() const;

private:
    struct Disk
    {
        QString folder; // one that is on it
        qint64 bytes = 0;
        qint64 freed = 0;
        qint64 largest = 0;
    };
    static QString nearest(const QString &folder);

    std::map<dev_t, Disk> m_disks;
    std::map<QString, dev_t> m_diskOf; // by folder
};

} // namespace kruv
