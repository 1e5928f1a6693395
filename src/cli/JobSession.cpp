// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/JobSession.h"

#include "cli/CommonOptions.h"

#include <utility>

namespace kruv {

JobSession::JobSession(const CommonOptions &options, std::unique_ptr<JobReporter> reporter)
    : m_userInterface(options)
    , m_queueRun(m_controller.taskQueue(), m_userInterface, std::move(reporter))
{
    if (options.jobs > 0) {
        m_controller.taskQueue().setMaxThreads(options.jobs);
    }
}

int JobSession::finish()
{
    m_controller.journal().finish();
    const int status = m_queueRun.finish();
    m_queueRun.sayHowToGoOn(m_controller.runRecorder());
    return status;
}

} // namespace kruv
