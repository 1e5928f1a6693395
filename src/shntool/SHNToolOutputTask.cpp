// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolOutputTask.h"

namespace kruv {

SHNToolOutputTask::SHNToolOutputTask(TaskCompletionSink *queue, Request request,
                                     const SHNToolProgress &progress)
    : AudioOutputTask(queue, {})
    , m_request(std::move(request))
    , m_display(*this, progress)
{
}

QString SHNToolOutputTask::runShntool(const QStringList &arguments, const QString &staging,
                                      const QString &folder)
{
    m_display.start();
    runTool(m_request.launchPath, arguments, [this](const QString &piece) { m_display.read(piece); });
    QString output = m_display.text().replace(staging, folder);
    appendResults(output);
    return output;
}

} // namespace kruv
