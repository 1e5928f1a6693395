// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/PcmConversionTask.h"

namespace kruv {

/// Decodes an Apple Lossless file to WAV, or to AIFF with its tags.
class DecodeALACTask : public PcmConversionTask
{
public:
    /// `format` is "WAV" or "AIFF".
    DecodeALACTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
                   const QString &format)
        : PcmConversionTask(queue, fileName, folder, format)
    {
    }

private:
    QString firstStatus() const override { return QStringLiteral("Decoding From Apple Lossless"); }
    void finishOutput() override;
    void handleAlacTags();
};

} // namespace kruv
