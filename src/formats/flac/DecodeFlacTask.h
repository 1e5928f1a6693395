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
    std::optional<DamageNote> damage() const override { return m_damage; }

protected:
    void makeOutput() override;
    void dress(StagedOutputs &outputs) override;
    ProofNote prove(const StagedOutputs &outputs) override;

private:
    static QString damagedReason() { return tr("it is damaged and was decoded through errors"); }
    QString damageInWords() const;

    bool m_isDamaged = false; // and was decoded all the same
    std::optional<DamageNote> m_damage;
};

} // namespace kruv
