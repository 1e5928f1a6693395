// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/ListJob.h"

#include <QHash>
#include <QStringList>

namespace kruv {

/// Writes one list of FLAC fingerprints (the MD5 of the decoded audio) per output folder.
class CreateFFPTask : public ListJob
{
public:
    /// `files`: FLAC files grouped by the folder their list goes into; `ffpName`: the list's file name.
    CreateFFPTask(TaskCompletionSink *queue, QHash<QString, QStringList> files, const QString &ffpName);

    QString outputPath() const override;

private:
    void doStartTask() override;
    void doCreateFFP(const QStringList &files, const QString &outputDir);

    QHash<QString, QStringList> m_files;
    QString m_ffpName;
};

} // namespace kruv
