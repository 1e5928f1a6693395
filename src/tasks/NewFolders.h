// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// The folders on the way to a place that had to be made for it. Those that are empty when it goes are
/// removed again. Any thread.
class NewFolders
{
public:
    /// Makes what is missing of `folder`. What can't be made shows when something is written there.
    explicit NewFolders(const QString &folder);
    ~NewFolders();
    NewFolders(const NewFolders &) = delete;
    NewFolders &operator=(const NewFolders &) = delete;

    /// The folders that got a new name in them, for DiskSync.
    QStringList places() const;

private:
    QStringList m_made; // outermost first
};

} // namespace kruv
