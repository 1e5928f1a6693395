// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolEachFileTask.h"

namespace kruv {

/// Takes the chunks that are not audio out of files, and writes them with a plain header.
class SHNToolStripTask : public SHNToolEachFileTask
{
public:
    SHNToolStripTask(TaskCompletionSink *queue, Request request)
        : SHNToolEachFileTask(
              queue, std::move(request),
              {.word = u"strip",
               .postfix = u"-stripped",
               .title = QT_TRANSLATE_NOOP("kruv::SHNToolEachFileTask", "Running SHNTool Strip"),
               .progress = {.text = QT_TRANSLATE_NOOP("kruv::SHNToolDisplay", "Stripping: %1%")}})
    {
    }
};

} // namespace kruv
