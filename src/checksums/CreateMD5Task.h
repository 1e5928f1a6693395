// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "checksums/ListJob.h"

#include <QCoreApplication>
#include <QStringList>

namespace kruv {

/// Writes one MD5 list over all its files, in their order.
class CreateMD5Task : public ListJob
{
    Q_DECLARE_TR_FUNCTIONS(kruv::CreateMD5Task)
public:
    CreateMD5Task(TaskCompletionSink *queue, const QStringList &files, const QString &outputPath);

    QString outputPath() const override { return m_list.path(); }
    /// True when every file lies in the folder of the first one; also for no files.
    static bool areAllSameDirectory(const QStringList &files);

private:
    void doStartTask() override;
    void doCreateMd5();

    const QStringList m_files;
    const TextOutput m_list;
};

} // namespace kruv
