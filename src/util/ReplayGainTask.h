// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/FlacMetadataCopy.h"
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
    JobOutline outline() const override { return {m_files, {}}; }
    std::optional<Receipt> receipt() const override { return m_receipt; }

protected:
    void prepare() override;
    void cleanup() override;
    void finalCleanup() override;

private:
    struct Before
    {
        QString path;
        FileStamp stamp;
        FlacMetadataCopy metadata;
    };

    const QStringList m_files;
    const QString m_folder;
    std::vector<Before> m_before;
    std::optional<Receipt> m_receipt;
};

} // namespace kruv
