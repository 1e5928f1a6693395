// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/CodecTask.h"

namespace kruv {

/// Decodes one lossless file to WAV by its codec's tool; AIFF is made of a temporary WAV. Tags are not taken
/// over.
class DecodeCodecTask : public CodecTask
{
protected:
    struct Recipe
    {
        const char *firstStatus;
        ToolStep decoder;
        /// Arguments where the tool writes a temporary WAV.
        CodecCommandLine::Builder argumentsForAiff;
    };
    static const Recipe wavpack;
    static const Recipe tta;
    static const Recipe ape;

    /// `format` is "WAV" or "AIFF".
    DecodeCodecTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
                    const QString &format, const Recipe &recipe);

    void doStartTask() override;

private:
    void decodeThroughWav();

    const Recipe &m_recipe;
    const bool m_toAiff;
};

} // namespace kruv
