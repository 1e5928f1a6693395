// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ConversionTask.h"

namespace kruv {

/// Makes WAV or AIFF of a file in this process. AIFF files get the source's tags, where it has any.
class PcmConversionTask : public ConversionTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::PcmConversionTask)
public:
    using ConversionTask::ConversionTask;

protected:
    void makeOutput() override;
    void dress(StagedOutputs &outputs) override;
    virtual QString firstStatus() const;
    virtual QString tagStatus() const;
};

} // namespace kruv
