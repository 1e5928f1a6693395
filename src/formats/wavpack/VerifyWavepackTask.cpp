// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/wavpack/VerifyWavepackTask.h"

#include "formats/VerifyOutput.h"

namespace kruv {

std::optional<double> VerifyWavepackTask::progressIn(QStringView line) const
{
    return VerifyOutput::percentDone(line);
}

} // namespace kruv
