// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/PcmConversionTask.h"

namespace kruv {

/// Decodes an Apple Lossless file to WAV, or to AIFF with its tags.
class DecodeALACTask final : public PcmConversionTask
{
public:
    using PcmConversionTask::PcmConversionTask;

protected:
    QString firstStatus() const override { return QStringLiteral("Decoding From Apple Lossless"); }
    QString tagStatus() const override { return QStringLiteral("Copying ALAC Tags"); }
};

} // namespace kruv
