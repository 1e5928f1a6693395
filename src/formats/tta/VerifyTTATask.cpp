// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/tta/VerifyTTATask.h"

#include "formats/VerifyOutput.h"

namespace kruv {

std::optional<double> VerifyTTATask::progressIn(QStringView line) const
{
    return VerifyOutput::percentDone(line);
}

} // namespace kruv
