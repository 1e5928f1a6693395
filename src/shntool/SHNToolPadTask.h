// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolEachFileTask.h"

namespace kruv {

/// Lengthens files to a whole number of CD sectors.
class SHNToolPadTask : public SHNToolEachFileTask
{
public:
    SHNToolPadTask(TaskCompletionSink *queue, Request request)
        : SHNToolEachFileTask(
              queue, std::move(request),
              {.word = u"pad",
               .postfix = u"-padded",
               .title = QT_TRANSLATE_NOOP("kruv::SHNToolEachFileTask", "Running SHNTool Pad"),
               .progress = {.text = QT_TRANSLATE_NOOP("kruv::SHNToolDisplay", "Padding: %1%")},
               .change = Proof::Change::SectorFilled})
    {
    }
};

} // namespace kruv
