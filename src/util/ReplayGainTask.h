// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"

#include <QCoreApplication>

namespace kruv {

/// Writes replay gain into the FLAC files of one folder, whose album gain spans them, or takes it out.
class ReplayGainTask : public KruvAsyncNSTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ReplayGainTask)
public:
    enum class What { Add, Remove };

    /// `launchPath` is metaflac's.
    ReplayGainTask(TaskCompletionSink *queue, const QString &launchPath, What what, const QStringList &files);

    void startTask() override;
    /// The folder.
    QString inputPath() const override { return m_folder; }

protected:
    void finalCleanup() override;

private:
    const QString m_folder;
};

} // namespace kruv
