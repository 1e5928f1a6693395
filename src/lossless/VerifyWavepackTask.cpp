// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "lossless/VerifyWavepackTask.h"

#include "lossless/VerifyOutput.h"

namespace kruv {

std::optional<double> VerifyWavepackTask::progressIn(QStringView line) const
{
    return VerifyOutput::percentDone(line);
}

} // namespace kruv
