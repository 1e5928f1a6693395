// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"
#include "tasks/TerminalText.h"
#include "tasks/TextOutput.h"

#include <QCoreApplication>

namespace kruv {

/// Writes a list of the hashes that shntool makes of files' audio data. The tool names files by their last
/// path component, so all of them have to lie in the first one's folder; others are left out, and said so.
class CreateST5Task : public KruvAsyncNSTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::CreateST5Task)
public:
    /// `launchPath`: the shntool tool. `files` must not be empty.
    CreateST5Task(TaskCompletionSink *queue, const QString &launchPath, const QStringList &files,
                  const QString &outputPath);

    void startTask() override;
    QString outputPath() const override { return m_target.path(); }

protected:
    void processTaskOutput(const QString &text) override;
    bool runsAgain() override;
    bool isFinished() const override { return m_runs.isEmpty(); }
    void willEnd() override;
    void finalCleanup() override;

private:
    void takeRunOutput();
    void prepareNextRun();

    const TextOutput m_target;
    qsizetype m_unhashed = 0;
    QList<QStringList> m_runs; // names still to hash, a list for each run of the tool
    /// Why a file is not in the list, a sentence each.
    QStringList m_leftOut;
    TerminalText m_output; // of the current run
    QString m_list;
    QString m_complaints;
};

} // namespace kruv
