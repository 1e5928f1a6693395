// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolTask.h"
#include "tasks/OutputWatch.h"

namespace kruv {

/// Joins files in the given order into one, which then goes where the person chose.
class SHNToolJoinTask : public SHNToolTask
{
public:
    SHNToolJoinTask(TaskCompletionSink *queue, const QString &launchPath, const QString &folder,
                    const QString &format, const QStringList &files);

    /// Where the joined file is to lie; a file that is there is replaced once the new one is complete.
    void setFileName(const QString &fileName) { m_fileName = fileName; }
    const QString &fileName() const { return m_fileName; }

    void startTask() override;
    QString outputPath() const override { return m_fileName; }

protected:
    void cleanup() override;

private:
    void moveToFileName();

    const QString m_joinedFile; // as the tool names it
    const QStringList m_files;
    QString m_fileName;
    OutputWatch m_joined;
    OutputWatch m_output;
};

} // namespace kruv
