// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ConversionTask.h"

namespace kruv {

/// Decodes an Opus file to WAV, or through a temporary WAV to AIFF.
class DecodeOpusTask final : public ConversionTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DecodeOpusTask)
public:
    using ConversionTask::ConversionTask;

protected:
    QStringList tools() const override { return {QStringLiteral("opusdec")}; }
    void makeOutput() override;

private:
    void decodeTo(const QString &wav);
};

} // namespace kruv
