// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/ListJob.h"

#include <QCoreApplication>
#include <QHash>
#include <QStringList>

namespace kruv {

/// Writes lists of FLAC fingerprints (the MD5 of the decoded audio).
class CreateFFPTask : public ListJob
{
    Q_DECLARE_TR_FUNCTIONS(kruv::CreateFFPTask)
public:
    /// `files`: FLAC files grouped by the folder their list goes into; `ffpName`: the lists' file name where
    /// the preferences don't name them after their folders.
    CreateFFPTask(TaskCompletionSink *queue, const QHash<QString, QStringList> &files,
                  const QString &ffpName);
    /// One list over `files`, saved as `path`.
    CreateFFPTask(TaskCompletionSink *queue, const QStringList &files, const QString &path);

    QString outputPath() const override { return m_lists.isEmpty() ? QString() : m_lists[0].path; }

private:
    struct List
    {
        QString path;
        QStringList files;
    };

    CreateFFPTask(TaskCompletionSink *queue, QList<List> lists);
    void doStartTask() override;
    void doCreateFFP(const List &list);
    QString fingerprintOf(const QString &file);

    const QList<List> m_lists;
};

} // namespace kruv
