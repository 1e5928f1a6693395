// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/DecodeCodecTask.h"

namespace kruv {

/// TTA to WAV or AIFF by ttaenc.
class DecodeTTATask final : public DecodeCodecTask
{
public:
    DecodeTTATask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                  const QString &format)
        : DecodeCodecTask(queue, fileName, outputPath, format, tta)
    {
    }
};

} // namespace kruv
