// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/CodecTask.h"

namespace kruv {

/// Decodes an Opus file to WAV, or through a temporary WAV to AIFF.
class DecodeOpusTask : public CodecTask
{
public:
    /// `format` is "WAV" or "AIFF".
    DecodeOpusTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                   const QString &format);

protected:
    void doStartTask() override;

private:
    void decodeTo(const QString &wav);
    void convertToAiff(const QString &wav);

    const bool m_toAiff;
};

} // namespace kruv
