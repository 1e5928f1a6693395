// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/ShntoolConvTask.h"

namespace kruv {

/// Shorten to WAV or AIFF, as the encoder among the arguments says.
class DecodeSHNTask final : public ShntoolConvTask
{
public:
    DecodeSHNTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments)
        : ShntoolConvTask(queue, launchPath, arguments, QStringLiteral("Decoding SHN: %1%"),
                          CodecOutput::shntoolPlain)
    {
    }
};

} // namespace kruv
