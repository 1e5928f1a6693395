// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/CodecOutput.h"
#include "tasks/KruvAsyncNSTask.h"
#include "tasks/OutputWatch.h"

namespace kruv {

/// One source converted by one shntool line: the source is its last argument, the output folder follows "-d",
/// the encoder, which is a format or "cust ext=FORMAT ...", follows "-o".
class ShntoolConvTask : public KruvAsyncNSTask
{
public:
    QString inputPath() const override { return m_fileName; }
    QString outputPath() const override { return m_outFile; }
    void startTask() override;

protected:
    /// `progress` is the status line, with %1 for the percentage.
    ShntoolConvTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments,
                    const QString &progress, CodecOutput::Reader read);

    void processTaskOutput(const QString &text) override;
    void cleanup() override;
    /// Runs before the source may be deleted. What it throws fails the job.
    virtual void copyTags() {}
    /// Why the encoder may have refused the audio. shntool keeps the encoder's own words to itself.
    virtual QString encoderLimits() const { return {}; }

private:
    const QString m_fileName;
    const QString m_outFile;
    const QString m_progress;
    const CodecOutput::Reader m_read;
    OutputWatch m_output;
    bool m_encoderFailed = false;
};

} // namespace kruv
