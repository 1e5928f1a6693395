// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/PcmConversionTask.h"

#include <QCoreApplication>

namespace kruv {

/// Decodes an Apple Lossless file to WAV, or to AIFF with its tags.
class DecodeALACTask final : public PcmConversionTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DecodeALACTask)
public:
    using PcmConversionTask::PcmConversionTask;

protected:
    QString firstStatus() const override { return tr("Decoding From Apple Lossless"); }
    QString tagStatus() const override { return tr("Copying ALAC Tags"); }
};

} // namespace kruv
