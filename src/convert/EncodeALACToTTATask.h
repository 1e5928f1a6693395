// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeRecipes.h"

namespace kruv {

/// Apple Lossless to TTA.
class EncodeALACToTTATask final : public TranscodeTask
{
public:
    EncodeALACToTTATask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath)
        : TranscodeTask(queue, fileName, outputPath, TranscodeRecipes::appleLosslessToTTA, Options{})
    {
    }
};

} // namespace kruv
