// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/DecodeCodecTask.h"

namespace kruv {

/// WavPack to WAV or AIFF by wvunpack. A WAV that is there stays, and the job fails.
class DecodeWavpackTask final : public DecodeCodecTask
{
public:
    DecodeWavpackTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                      const QString &format)
        : DecodeCodecTask(queue, fileName, outputPath, format, wavpack)
    {
    }
};

} // namespace kruv
