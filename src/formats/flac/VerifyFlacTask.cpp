// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/VerifyFlacTask.h"

#include "audio/SourceCheck.h"
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
    QString remark;
    if (error() && FlacOutput::stumbled(m_singleResult)) {
        remark = SourceCheck::remarkOnSound(inputPath(), [this] { return !cancelled(); });
    }
    if (remark.isEmpty()) {
        appendResults(FlacOutput::condensed(m_singleResult, u"% complete"));
        return;
    }
    setError(false);
    appendResults(FlacOutput::okLines(fileName()) + remark + u'\n');
}

} // namespace kruv
