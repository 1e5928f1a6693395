// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ConversionTask.h"

#include <QCoreApplication>

namespace kruv {

/// Shorten to WAV or AIFF by shntool.
class DecodeSHNTask final : public ConversionTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DecodeSHNTask)
public:
    using ConversionTask::ConversionTask;

protected:
    void makeOutput() override;
};

} // namespace kruv
