// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/History.h"
#include "platform/Trash.h"

#include <mutex>

namespace kruv {

/// What the jobs that undo one run look things up in. Any thread.
class UndoMeans
{
public:
    /// Throws as History does.
    explicit UndoMeans(const QString &journal)
        : m_history(journal)
    {
    }

    QByteArray wayBackOf(std::int64_t entry)
    {
        const std::lock_guard lock(m_lock);
        return m_history.wayBackOf(entry);
    }
    QStringList trashedFrom(const QString &path)
    {
        const std::lock_guard lock(m_lock);
        return m_trash.from(path);
    }

private:
    std::mutex m_lock;
    const History m_history;
    TrashListing m_trash;
};

} // namespace kruv
