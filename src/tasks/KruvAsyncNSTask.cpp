// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvAsyncNSTask.h"

#include "base/HeldWork.h"
#include "base/TaskPool.h"
#include "base/WorkPause.h"
#include "platform/MainThread.h"
#include "tasks/PieceRelay.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolRun.h"

#include <exception>

namespace kruv {

KruvAsyncNSTask::KruvAsyncNSTask(TaskCompletionSink *queue, const QString &launchPath,
                                 const QStringList &arguments)
    : KruvTask(queue)
    , m_launchPath(launchPath)
    , m_arguments(arguments)
    , m_environment(ToolEnvironment::base())
{
}

void KruvAsyncNSTask::appendToPATH(const QString &folder)
{
    ToolEnvironment::appendToPath(m_environment, folder);
}

void KruvAsyncNSTask::foresee()
{
    ToolCatalog::requireLaunchable(m_launchPath);
}

void KruvAsyncNSTask::startTask()
{
    showRunningRow();
    ToolCatalog::requireLaunchable(m_launchPath);
    TaskPool::start([self = shared_from_this(), this]() mutable {
        run();
        MainThread::post([last = std::move(self)] {}); // jobs end their lives where they began
    });
}

void KruvAsyncNSTask::run()
{
    const HeldWork held(workPause(), stopToken());
    try {
        prepare();
        runTool();
    } catch (const std::exception &failure) {
        return failToStart(QString::fromUtf8(failure.what()));
    }
    try {
        cleanup();
    } catch (const std::exception &failure) {
        fail(QString::fromUtf8(failure.what()));
    }
    MainThread::run([this] { finish(); });
}

void KruvAsyncNSTask::runTool()
{
    const auto relay = std::make_shared<PieceRelay>(
        [self = shared_from_this(), this](const QString &piece) { processTaskOutput(piece); });
    bool again = false;
    do {
        ToolRun tool({m_launchPath, m_arguments, m_currentDirectoryPath, m_environment}, stopToken());
        const ToolEnd end = tool.run([&relay](const QString &piece) { relay->put(piece); });
        if (!again) {
            end.requireLaunched();
        }
        MainThread::run([&] { again = toolEnded(end); });
    } while (again);
}

bool KruvAsyncNSTask::toolEnded(const ToolEnd &end)
{
    judge(end, m_launchPath);
    if (!cancelled() && runsAgain()) {
        return true;
    }
    if (end.succeeded() && isFinished()) {
        noteDoneAllTheSame();
    }
    startFinishing();
    willEnd();
    return false;
}

void KruvAsyncNSTask::processTaskOutput(const QString &text)
{
    appendResults(text);
}

void KruvAsyncNSTask::neverRan()
{
    results()->setHasResults(false);
}

void KruvAsyncNSTask::cancelTask()
{
    const bool again = cancelled() && isActive();
    if (!again) {
        KruvTask::cancelTask();
    }
    if (again || (workPause() && workPause()->isOn())) { // a tool that is paused can't finish
        stopTools();
    }
}

void KruvAsyncNSTask::stopTask()
{
    willEnd();
    neverRan();
    finish();
}

void KruvAsyncNSTask::finish()
{
    KruvTask::stopTask();
    finalCleanup();
    notifyQueue();
}

QString KruvAsyncNSTask::description() const
{
    QString text = QStringLiteral("\"%1\"\n ").arg(m_launchPath);
    for (const QString &argument : m_arguments) {
        text += QStringLiteral("\"%1\"\n ").arg(argument);
    }
    return text;
}

} // namespace kruv
