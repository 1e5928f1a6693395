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

/// Whether the owner of `stagingFolder` is gone for certain, so that nobody misses what lies in it.
bool isStale(const QString &stagingFolder);

/// Whether the process that thisProcess() said that of has ended for certain: one of this host that is gone.
bool hasEnded(const QByteArray &process);

} // namespace kruv::StagingLock
