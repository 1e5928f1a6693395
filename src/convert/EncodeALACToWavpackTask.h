// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeRecipes.h"

namespace kruv {

/// Apple Lossless to WavPack. `level` is "-f" or "-h".
class EncodeALACToWavpackTask final : public TranscodeTask
{
public:
    EncodeALACToWavpackTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                            const QString &level)
        : TranscodeTask(queue, fileName, outputPath, TranscodeRecipes::appleLosslessToWavpack, Options{level})
    {
    }
};

} // namespace kruv
