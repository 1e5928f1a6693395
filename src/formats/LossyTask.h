// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/TranscodeTask.h"

namespace kruv {

/// What the jobs that make lossy files share: their encoders take any bytes for samples, so the source is
/// looked at before, and the output's length after.
class LossyTask : public TranscodeTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::LossyTask)
public:
    using TranscodeTask::TranscodeTask;

protected:
    void makeOutput() override;
    void dress(StagedOutputs &outputs) override;
    bool readsItself() const override;

private:
    void requireSoundSource() const;
    void requireWholeOutput();
};

} // namespace kruv
