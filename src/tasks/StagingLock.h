// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

/// Who holds a staging folder: a file in it that its process keeps locked and that names that process.
namespace kruv::StagingLock {

/// Of the lock inside the folder.
QString fileName();

/// What the file says of its owner: host, boot, process and the process's start.
QByteArray thisProcess();

/// Locks a new staging folder for this process: the file handle that holds the lock, or -1 with errno. Where
/// the file system can do that, the lock comes into the folder whole.
int create(const QString &stagingFolder);

enum class State {
    InUse,
    /// It holds nothing, not even a lock: an owner that is just making it makes another one where it goes.
    Bare,
    /// Its owner is gone for certain, so that nobody misses what lies in it.
    Stale
};
State stateOf(const QString &stagingFolder);

/// Whether the process that thisProcess() said that of has ended for certain: one of this host that is gone.
bool hasEnded(const QByteArray &process);

} // namespace kruv::StagingLock
