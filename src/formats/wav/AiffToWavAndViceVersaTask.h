// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/PcmConversionTask.h"

#include <QCoreApplication>

namespace kruv {

/// Makes WAV of AIFF files and AIFF of WAV files.
class AiffToWavAndViceVersaTask final : public PcmConversionTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::AiffToWavAndViceVersaTask)
public:
    using PcmConversionTask::PcmConversionTask;

protected:
    QString firstStatus() const override
    {
        return tr("Converting to %1").arg(makesAiff() ? u"AIFF" : u"WAV");
    }
};

} // namespace kruv
