// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeRecipes.h"

namespace kruv {

/// WAV, AIFF, FLAC, Shorten or Apple Lossless to WavPack. `level` is "-f" or "-h".
class EncodeWavpackTask final : public TranscodeTask
{
public:
    EncodeWavpackTask(TaskCompletionSink *queue, const QString &fileName, const QString &level,
                      const QString &outputPath)
        : TranscodeTask(queue, fileName, outputPath, TranscodeRecipes::toWavpack, Options{level})
    {
    }
};

} // namespace kruv
