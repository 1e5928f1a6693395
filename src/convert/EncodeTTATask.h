// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeRecipes.h"

namespace kruv {

/// WAV, AIFF, FLAC, Shorten or Apple Lossless to TTA.
class EncodeTTATask final : public TranscodeTask
{
public:
    EncodeTTATask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath)
        : TranscodeTask(queue, fileName, outputPath, TranscodeRecipes::toTTA, Options{})
    {
    }
};

} // namespace kruv
