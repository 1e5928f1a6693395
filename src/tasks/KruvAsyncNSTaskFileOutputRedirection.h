// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"
#include "tasks/TextOutput.h"

#include <QCoreApplication>

namespace kruv {

/// Runs a tool and keeps the set's whole text in a file (UTF-8, written atomically) instead of a results
/// window. A job that was cancelled while it waited leaves the file alone; one whose file can't be written
/// fails.
class KruvAsyncNSTaskFileOutputRedirection : public KruvAsyncNSTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::KruvAsyncNSTaskFileOutputRedirection)
public:
    KruvAsyncNSTaskFileOutputRedirection(const TextOutput &file, TaskCompletionSink *queue,
                                         const QString &launchPath, const QStringList &arguments);

    const QString &fileName() const { return m_file.path(); }
    const QString &subTitle() const { return m_subTitle; }
    /// Status line while the tool runs.
    void setSubTitle(const QString &subTitle) { m_subTitle = subTitle; }

    void startTask() override;
    QString outputPath() const override { return m_file.path(); }

protected:
    /// Subclasses with outcome work of their own call this one first.
    void cleanup() override;

private:
    const TextOutput m_file;
    QString m_subTitle;
};

} // namespace kruv
