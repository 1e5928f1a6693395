// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/VerifyCodecTask.h"

#include "formats/VerifyOutput.h"

namespace kruv {

void VerifyCodecTask::processTaskOutput(const QString &text)
{
    m_output.append(text);
    if (const auto percent = progressIn(m_output.currentLine())) {
        setTopTextFieldString(tr("Verifying: %1%").arg(*percent, 0, 'f', 6));
        setProgressIndicatorValue(*percent);
        publish(&KruvTask::updateStatus);
    }
}

void VerifyCodecTask::cleanup()
{
    QString text = report(m_output.text());
    if (cancelled()) {
        text += tr("%1 canceled\n").arg(fileName());
    } else if (!error()) {
        text += tr("%1: ok\n").arg(fileName());
    } else if (text.isEmpty()) {
        text += tr("%1: failed\n").arg(fileName());
    }
    appendResults(text);
}

QString VerifyCodecTask::report(const QString &text) const
{
    return VerifyOutput::namedLines(text, fileName());
}

} // namespace kruv
