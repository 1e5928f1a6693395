// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/VerifyFlacTask.h"

#include "base/PathNames.h"
#include "formats/flac/FlacOutput.h"
#include "tasks/ToolOutput.h"

namespace kruv {

VerifyFlacTask::VerifyFlacTask(std::shared_ptr<KruvTaskResults> results, TaskCompletionSink *queue,
                               const QString &launchPath, const QStringList &arguments)
    : KruvAsyncNSTask(queue, launchPath, arguments)
    , m_fileName(PathNames::lastPathComponent(arguments.at(1)))
{
    setTitle(m_fileName);
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
    setResults(std::move(results));
}

void VerifyFlacTask::startTask()
{
    setTopTextFieldString(QStringLiteral("Verifying"));
    publish(&KruvTask::setTopTextFieldValue);
    KruvAsyncNSTask::startTask();
}

void VerifyFlacTask::processTaskOutput(const QString &text)
{
    const QStringView piece = ToolOutput::cleaned(text);
    if (piece.isEmpty()) {
        return; // the tool moves its cursor back one character a write
    }
    const auto report = FlacOutput::verifyReport(piece, m_fileName);
    m_singleResult += report.lines;
    if (report.percentage) {
        setTopTextFieldString(QStringLiteral("Verifying: %1%").arg(*report.percentage, 0, 'f', 6));
        setProgressIndicatorValue(*report.percentage);
    }
    setTextFieldString(m_fileName);
    publish(&KruvTask::setCombinedStatus);
}

void VerifyFlacTask::willEnd()
{
    if (cancelled()) {
        m_singleResult += QStringLiteral("%1 canceled\n").arg(m_fileName);
    }
}

void VerifyFlacTask::cleanup()
{
    appendResults(FlacOutput::condensed(m_singleResult, u"% complete"));
}

} // namespace kruv
