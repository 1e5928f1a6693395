// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvTask.h"

#include <QHash>
#include <QStringList>

namespace kruv {

/// Writes one list of FLAC fingerprints (the MD5 of the decoded audio) per output folder.
class CreateFFPTask : public KruvTask
{
public:
    /// `files`: FLAC files grouped by the folder their list goes into; `ffpName`: the list's file name.
    CreateFFPTask(TaskCompletionSink *queue, QHash<QString, QStringList> files, const QString &ffpName);

    void startTask() override;
    void stopTask() override;
    QString outputPath() const override;

private:
    void doStartTask();
    bool doCreateFFP(const QStringList &files, const QString &outputDir);

    QHash<QString, QStringList> m_files;
    QString m_ffpName;
};

} // namespace kruv
