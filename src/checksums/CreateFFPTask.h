// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/ListJob.h"

#include <QCoreApplication>
#include <QStringList>

namespace kruv {

/// Writes lists of FLAC fingerprints (the MD5 of the decoded audio).
class CreateFFPTask : public ListJob
{
    Q_DECLARE_TR_FUNCTIONS(kruv::CreateFFPTask)
public:
    struct List
    {
        QString path;
        QStringList files;
    };

    /// One list over `files`, saved as `path`.
    CreateFFPTask(TaskCompletionSink *queue, const QStringList &files, const QString &path);
    CreateFFPTask(TaskCompletionSink *queue, const QList<List> &lists);

    /// The files are outputs of other jobs: those that were not made are left out, and counted.
    void leaveOutUnmade() { m_leavesOutUnmade = true; }

    QString outputPath() const override { return m_lists.isEmpty() ? QString() : m_lists[0].target.path(); }

private:
    struct TargetedList
    {
        TextOutput target;
        QStringList files;
    };

    void doStartTask() override;
    void leaveOutUnmade(QStringList &files);
    void doCreateFFP(const TargetedList &list);
    QString fingerprintOf(const QString &file);

    QList<TargetedList> m_lists;
    bool m_leavesOutUnmade = false;
};

} // namespace kruv
