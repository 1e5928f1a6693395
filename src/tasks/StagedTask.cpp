// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StagedTask.h"

#include "base/PathNames.h"
#include "platform/MainThread.h"
#include "tasks/ToolRun.h"

#include <utility>

namespace kruv {

StagedTask::StagedTask(TaskCompletionSink *queue, const QString &fileName)
    : KruvTask(queue)
    , m_fileName(fileName)
{
    setTitle(PathNames::lastPathComponent(fileName));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void StagedTask::startTask()
{
    KruvTask::startTask();
    runInBackground([this] {
        if (mayGoOn()) {
            doStartTask();
        }
    });
}

void StagedTask::stopTask()
{
    MainThread::run([this] {
        if (!error()) {
            results()->setHasResults(false);
        }
        KruvTask::stopTask();
        notifyQueue();
    });
}

bool StagedTask::runTool(const QString &launchPath, const QStringList &arguments, const OutputReader &read,
                         const QString &folder)
{
    if (!mayGoOn()) {
        return false;
    }
    restartProgress();
    bool lineEnded = true;     // so that what readers make of two lines, or of two tools, never runs together
    std::stop_source unwanted; // by the job, or by `read`, which may find that it failed
    const std::stop_callback onStop(stopToken(), [&unwanted] { unwanted.request_stop(); });
    ToolRun tool({launchPath, arguments, folder}, unwanted.get_token());
    const ToolEnd end = tool.run([&](const QString &piece) {
        if (mayGoOn()) {
            if (std::exchange(lineEnded, piece.endsWith(u'\n'))) {
                results()->endLine(*this);
            }
            read(piece);
        }
        if (!mayGoOn()) {
            unwanted.request_stop();
        }
    });
    end.requireLaunched();
    judge(end, launchPath);
    return mayGoOn();
}

void StagedTask::showStatus(const QString &status)
{
    setTopTextFieldString(status);
    publish(&KruvTask::setTopTextFieldValue);
}

void StagedTask::showProgress(const QString &status, double percentage)
{
    constexpr double step = 1.0;
    if (percentage >= m_lastPercentageDisplayed + step) {
        m_lastPercentageDisplayed = percentage;
        setTopTextFieldString(status);
        setProgressIndicatorValue(percentage);
        publish(&KruvTask::updateStatus);
    }
}

} // namespace kruv
