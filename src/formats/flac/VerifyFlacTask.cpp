// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/VerifyFlacTask.h"

#include "formats/flac/FlacOutput.h"
#include "tasks/ToolOutput.h"

namespace kruv {

void VerifyFlacTask::processTaskOutput(const QString &text)
{
    const QStringView piece = ToolOutput::cleaned(text);
    if (piece.isEmpty()) {
        return; // the tool moves its cursor back one character a write
    }
    const auto report = FlacOutput::verifyReport(piece, fileName());
    m_singleResult += report.lines;
    if (report.percentage) {
        setTopTextFieldString(tr("Verifying: %1%").arg(*report.percentage, 0, 'f', 6));
        setProgressIndicatorValue(*report.percentage);
    }
    setTextFieldString(fileName());
    publish(&KruvTask::setCombinedStatus);
}

void VerifyFlacTask::willEnd()
{
    if (cancelled()) {
        m_singleResult += tr("%1 canceled\n").arg(fileName());
    }
}

void VerifyFlacTask::cleanup()
{
    appendResults(FlacOutput::condensed(m_singleResult, u"% complete"));
}

} // namespace kruv
