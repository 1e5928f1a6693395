// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"
#include "tasks/OutputWatch.h"

namespace kruv {

/// FLAC to WAV or AIFF by the flac tool; the output is the last argument. AIFF outputs get the source's tags.
class DecodeFlacTask : public KruvAsyncNSTask
{
public:
    DecodeFlacTask(const QString &fileName, TaskCompletionSink *queue, const QString &launchPath,
                   const QStringList &arguments);

    void startTask() override;
    QString inputPath() const override { return m_fileName; }
    QString outputPath() const override { return arguments().last(); }

protected:
    void processTaskOutput(const QString &text) override;
    void cleanup() override;

private:
    void copyFlacTags();

    QString m_fileName;
    OutputWatch m_output;
    bool m_damageReported = false;
};

} // namespace kruv
