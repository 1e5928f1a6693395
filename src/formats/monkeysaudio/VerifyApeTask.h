// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/VerifyCodecTask.h"

namespace kruv {

/// Tests a Monkey's Audio file with mac.
class VerifyApeTask : public VerifyCodecTask
{
public:
    using VerifyCodecTask::VerifyCodecTask;

protected:
    std::optional<double> progressIn(QStringView line) const override;
    QString report(const QString &text) const override;
};

} // namespace kruv
