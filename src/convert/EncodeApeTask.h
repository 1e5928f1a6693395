// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeRecipes.h"

namespace kruv {

/// WAV, AIFF, FLAC, Shorten or Apple Lossless to Monkey's Audio. `level` is "1000" to "5000".
class EncodeApeTask final : public TranscodeTask
{
public:
    EncodeApeTask(TaskCompletionSink *queue, const QString &fileName, const QString &level,
                  const QString &outputPath)
        : TranscodeTask(queue, fileName, outputPath, TranscodeRecipes::toApe, Options{level})
    {
    }
};

} // namespace kruv
