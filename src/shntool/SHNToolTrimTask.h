// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolEachFileTask.h"

namespace kruv {

/// Cuts the digital silence from both ends of files.
class SHNToolTrimTask : public SHNToolEachFileTask
{
public:
    SHNToolTrimTask(TaskCompletionSink *queue, const QString &launchPath, const QString &folder,
                    const QString &format, const QStringList &files)
        : SHNToolEachFileTask(queue, launchPath,
                              {.word = u"trim",
                               .postfix = u"-trimmed",
                               .title = "Running SHNTool Trim",
                               .progress = {.text = "%2 Files: %1%", .asWritten = true, .namesFile = true}},
                              folder, format, files)
    {
    }
};

} // namespace kruv
