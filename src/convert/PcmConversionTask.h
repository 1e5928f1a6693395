// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/StagedTask.h"

namespace kruv {

/// Base of the jobs that make WAV or AIFF of a file in this process, into `folder` under the file's name.
class PcmConversionTask : public StagedTask
{
public:
    QString outputPath() const override { return m_outFile; }

protected:
    /// `format` is "WAV" or "AIFF".
    PcmConversionTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
                      const QString &format);

    void doStartTask() override;
    const QString &format() const { return m_format; }
    bool toAiff() const { return m_format == u"AIFF"; }

private:
    virtual QString firstStatus() const = 0;
    /// What follows a conversion that succeeded.
    virtual void finishOutput() {}

    const QString m_format;
    const QString m_outFile;
};

} // namespace kruv
