// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeRecipes.h"

namespace kruv {

/// Apple Lossless to FLAC, at the level that the tool has by itself.
class EncodeALACToFlacTask final : public TranscodeTask
{
public:
    EncodeALACToFlacTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                         int level, bool verify, std::shared_ptr<KruvTaskResults> results)
        : TranscodeTask(queue, fileName, outputPath, TranscodeRecipes::appleLosslessToFlac,
                        Options{QString::number(level), verify})
    {
        setResults(std::move(results));
    }
};

} // namespace kruv
