// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/VerifyCodecTask.h"

namespace kruv {

/// Tests a TTA file with ttaenc.
class VerifyTTATask : public VerifyCodecTask
{
public:
    using VerifyCodecTask::VerifyCodecTask;

protected:
    std::optional<double> progressIn(QStringView line) const override;
};

} // namespace kruv
