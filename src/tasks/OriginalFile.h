// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

class KruvTask;
class StagedOutputs;
struct FileStamp;

namespace OriginalFile {

/// The last step of a job whose outputs were committed: deletes `source`, of which `read` is known since
/// before it was read, when the job was asked to and neither failed nor was cancelled. When an output is
/// missing, empty or not safely on the disk, or the source was touched meanwhile, it stays and the job fails,
/// saying so.
void deleteAfterCommit(KruvTask &task, const QString &source, const FileStamp &read,
                       const StagedOutputs &outputs);

/// Keeps the source of a job that was asked to delete it, fails the job and says why.
void keep(KruvTask &task, const QString &source, const QString &reason);

} // namespace OriginalFile
} // namespace kruv
