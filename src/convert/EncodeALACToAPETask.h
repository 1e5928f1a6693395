// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeRecipes.h"

namespace kruv {

/// Apple Lossless to Monkey's Audio. `level` is "1000" to "5000".
class EncodeALACToAPETask final : public TranscodeTask
{
public:
    EncodeALACToAPETask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                        const QString &level)
        : TranscodeTask(queue, fileName, outputPath, TranscodeRecipes::appleLosslessToApe, Options{level})
    {
    }
};

} // namespace kruv
