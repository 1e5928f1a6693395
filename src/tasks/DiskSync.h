// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// What has to survive a power cut: files that were written, folders in which names were given. Jobs that ask
/// at the same time about small files of one volume share one trip to its disk.
class DiskSync
{
public:
    /// Opens them, so that no error of theirs goes unseen from here on. Links are followed.
    explicit DiskSync(const QStringList &paths);
    ~DiskSync();
    DiskSync(const DiskSync &) = delete;
    DiskSync &operator=(const DiskSync &) = delete;

    /// Brings them to the disk. An empty text, or which could not be brought there and why, for a person:
    /// what was written may be lost. Blocks.
    QString run();

private:
    struct Item
    {
        QString path;
        int descriptor = -1;
        int error = 0;
    };
    bool mayShare() const;
    /// False where each is to be looked after by itself.
    bool shareTrip() const;

    QList<Item> m_items;
};

} // namespace kruv
