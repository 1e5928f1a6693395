// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/DecodeCodecTask.h"

namespace kruv {

/// Monkey's Audio to WAV or AIFF by mac.
class DecodeAPETask final : public DecodeCodecTask
{
public:
    DecodeAPETask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                  const QString &format)
        : DecodeCodecTask(queue, fileName, outputPath, format, ape)
    {
    }
};

} // namespace kruv
