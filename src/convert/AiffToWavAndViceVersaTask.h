// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/PcmConversionTask.h"

namespace kruv {

/// Makes WAV of AIFF files and AIFF of WAV files. Tags are not taken over.
class AiffToWavAndViceVersaTask : public PcmConversionTask
{
public:
    /// `format`, the target, is "WAV" or "AIFF".
    AiffToWavAndViceVersaTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
                              const QString &format)
        : PcmConversionTask(queue, fileName, folder, format)
    {
    }

private:
    QString firstStatus() const override { return QStringLiteral("Converting to %1").arg(format()); }
};

} // namespace kruv
