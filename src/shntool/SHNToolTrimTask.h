// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolEachFileTask.h"

namespace kruv {

/// Cuts the digital silence from both ends of files.
class SHNToolTrimTask : public SHNToolEachFileTask
{
public:
    SHNToolTrimTask(TaskCompletionSink *queue, Request request)
        : SHNToolEachFileTask(
              queue, std::move(request),
              {.word = u"trim",
               .postfix = u"-trimmed",
               .title = QT_TRANSLATE_NOOP("kruv::SHNToolEachFileTask", "Running SHNTool Trim"),
               .progress = {.text = QT_TRANSLATE_NOOP("kruv::SHNToolDisplay", "%2 Files: %1%"),
                            .asWritten = true,
                            .namesFile = true},
               .change = Proof::Change::SilenceCut})
    {
    }
};

} // namespace kruv
