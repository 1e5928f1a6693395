// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"
#include "tasks/OutputWatch.h"

namespace kruv {

/// WAV or AIFF (or FLAC) to FLAC by the flac tool; the output is the last argument. Tags of an AIFF source
/// are copied.
class EncodeFlacTask : public KruvAsyncNSTask
{
public:
    EncodeFlacTask(const QString &fileName, TaskCompletionSink *queue, const QString &launchPath,
                   const QStringList &arguments, std::shared_ptr<KruvTaskResults> results);

    void startTask() override;
    QString inputPath() const override { return m_fileName; }
    QString outputPath() const override { return arguments().last(); }

protected:
    void processTaskOutput(const QString &text) override;
    void cleanup() override;
    void finalCleanup() override;

private:
    void copyAiffTags();

    QString m_fileName;
    OutputWatch m_output;
    bool m_mayReplace = false;
    bool m_overItself = false;
    bool m_sourceIsShort = false;
    double m_lastPercentageDisplayed = 0.0;
};

} // namespace kruv
