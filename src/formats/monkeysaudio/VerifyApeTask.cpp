// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/monkeysaudio/VerifyApeTask.h"

#include "formats/VerifyOutput.h"

namespace kruv {

std::optional<double> VerifyApeTask::progressIn(QStringView line) const
{
    return VerifyOutput::percentAfterProgress(line);
}

QString VerifyApeTask::report(const QString &text) const
{
    return VerifyOutput::namedLines(VerifyOutput::fromLastProgress(text), fileName());
}

} // namespace kruv
