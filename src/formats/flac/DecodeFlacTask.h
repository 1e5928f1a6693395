// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ConversionTask.h"

namespace kruv {

/// FLAC to WAV or AIFF by the flac tool. AIFF outputs get the source's tags.
class DecodeFlacTask final : public ConversionTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DecodeFlacTask)
public:
    using ConversionTask::ConversionTask;

protected:
    void makeOutput() override;
    void dress(StagedOutputs &outputs) override;
    ProofNote prove(const StagedOutputs &outputs) override;

private:
    static QString damaged(); // a clause

    bool m_wasDamaged = false;
};

} // namespace kruv
