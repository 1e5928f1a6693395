// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/JobSession.h"

#include "cli/CommonOptions.h"
#include "cli/TimeSpan.h"
#include "platform/Priority.h"

#include <utility>

namespace kruv {

JobSession::JobSession(const CommonOptions &options, std::unique_ptr<JobReporter> reporter)
    : m_userInterface(options)
    , m_queueRun(m_controller.taskQueue(), m_userInterface, std::move(reporter))
{
    // Others would wait in vain for a journal that is being written.
    QObject::connect(&m_queueRun, &QueueRun::stopping, &m_queueRun,
                     [this] { m_controller.journal().waitUntilWritten(); });
    if (options.nice && !options.noNice) {
        Priority::giveWay();
    }
    if (const auto time = TimeSpan::fromText(QString::fromStdString(options.stopAfter))) {
        m_queueRun.stopAfter(*time);
    }
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
