// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTaskFileOutputRedirection.h"

namespace kruv {

/// Writes a cue sheet for the given files, as though they were joined. What the tool prints when it refuses a
/// file isn't kept as a sheet, but shown.
class SHNToolCueTask : public KruvAsyncNSTaskFileOutputRedirection
{
public:
    SHNToolCueTask(const QString &fileName, TaskCompletionSink *queue, const QString &launchPath,
                   const QStringList &files)
        : KruvAsyncNSTaskFileOutputRedirection(
              fileName, queue, launchPath, QStringList{QStringLiteral("cue"), QStringLiteral("-c")} + files)
    {
        setTitle(QStringLiteral("Creating CUE sheet"));
        setSubTitle(QStringLiteral("Processing"));
    }

protected:
    void cleanup() override
    {
        if (!error() && !cancelled()) {
            KruvAsyncNSTaskFileOutputRedirection::cleanup();
        } else if (!error()) {
            results()->setHasResults(false);
        }
    }
};

} // namespace kruv
