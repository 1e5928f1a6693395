// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolOutput.h"
#include "tasks/KruvAsyncNSTaskFileOutputRedirection.h"

#include <QCoreApplication>

namespace kruv {

/// Writes a cue sheet for the given files, as though they were joined. What the tool prints when it refuses a
/// file isn't kept as a sheet, but shown.
class SHNToolCueTask : public KruvAsyncNSTaskFileOutputRedirection
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SHNToolCueTask)
public:
    SHNToolCueTask(const QString &fileName, TaskCompletionSink *queue, const QString &launchPath,
                   const QStringList &files)
        : KruvAsyncNSTaskFileOutputRedirection(TextOutput(fileName, files), queue, launchPath,
                                               QStringList{QStringLiteral("cue"), QStringLiteral("-c")} +
                                                   files)
    {
        setTitle(tr("Creating CUE sheet"));
        setSubTitle(tr("Processing"));
    }

protected:
    void processTaskOutput(const QString &text) override
    {
        m_output += text.left(KruvTaskResults::maxTextLength - m_output.size());
    }
    void willEnd() override
    {
        const SHNToolOutput::Parts parts = SHNToolOutput::takeApart(m_output);
        appendResults(error() && !parts.messages.isEmpty() ? parts.messages : parts.report);
    }
    void cleanup() override
    {
        if (!error() && !wasStopped()) {
            KruvAsyncNSTaskFileOutputRedirection::cleanup();
        } else if (!error()) {
            results()->setHasResults(false);
        }
    }

private:
    QString m_output;
};

} // namespace kruv
