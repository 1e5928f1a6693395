// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvAsyncNSTask.h"

#include "base/TaskPool.h"
#include "platform/MainThread.h"
#include "tasks/DirectTool.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolEnvironment.h"

#include <QProcess>

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

KruvAsyncNSTask::~KruvAsyncNSTask()
{
    if (m_process) {
        // The tool is ended with the job; nobody is left to hear of it.
        m_process->disconnect();
        m_process->kill();
        m_process->waitForFinished();
    }
}

void KruvAsyncNSTask::appendToPATH(const QString &folder)
{
    ToolEnvironment::appendToPath(m_environment, folder);
}

void KruvAsyncNSTask::startTask()
{
    showRunningRow();
    ToolCatalog::requireLaunchable(m_launchPath);
    m_process = std::make_unique<QProcess>();
    m_process->setProcessEnvironment(ToolEnvironment::unbuffered(m_environment));
    if (!m_currentDirectoryPath.isEmpty()) {
        m_process->setWorkingDirectory(m_currentDirectoryPath);
    }
    ToolEnvironment::prepare(*m_process);
    connectChild();
    m_process->start(directProgram(m_launchPath, m_arguments), m_arguments, QIODevice::ReadOnly);
}

void KruvAsyncNSTask::connectChild()
{
    QProcess *child = m_process.get();
    QObject::connect(child, &QProcess::readyRead, child, [this] { readAvailable(); });
    QObject::connect(child, &QProcess::errorOccurred, child, [this](QProcess::ProcessError problem) {
        if (problem == QProcess::FailedToStart) {
            childFailedToStart();
        }
    });
    QObject::connect(child, &QProcess::finished, child, [this](int exitStatus, QProcess::ExitStatus how) {
        childFinished(exitStatus, how == QProcess::CrashExit);
    });
}

void KruvAsyncNSTask::readAvailable()
{
    const QByteArray data = m_process->readAll();
    const QString text = m_decoder(data);
    if (!text.isEmpty()) {
        m_printedText = true;
        processTaskOutput(text);
    }
}

void KruvAsyncNSTask::childFailedToStart()
{
    m_ending = true;
    MainThread::post([self = shared_from_this(), this] { m_process.reset(); });
    failToStart(ToolCatalog::launchFailureMessage(m_launchPath, m_process->errorString()));
}

void KruvAsyncNSTask::childFinished(int exitStatus, bool crashed)
{
    m_childEnded = true;
    // The process object is in the middle of emitting a signal: it goes when the event loop is back.
    MainThread::post([self = shared_from_this(), this, exitStatus, crashed] {
        judge(exitStatus, crashed);
        m_process.reset();
        stopTask();
    });
}

void KruvAsyncNSTask::judge(int exitStatus, bool crashed)
{
    if (!cancelled() && exitStatus != 0) {
        setError(true);
        appendResults(ToolCatalog::silentFailureMessage(m_launchPath, exitStatus, crashed, m_printedText));
    }
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
    if (cancelled() && m_process) {
        m_process->terminate();
        return;
    }
    KruvTask::cancelTask();
}

void KruvAsyncNSTask::stopTask()
{
    const bool running = m_process != nullptr;
    if (running || m_ending) {
        return; // the job ends when its tool does
    }
    m_ending = true;
    willEnd();
    markDone();
    if (!m_childEnded) {
        neverRan();
        finish();
        return;
    }
    TaskPool::start([self = shared_from_this(), this]() mutable {
        try {
            cleanup();
        } catch (const std::exception &failure) {
            fail(QString::fromUtf8(failure.what()));
        }
        MainThread::post([last = std::move(self), this] { finish(); });
    });
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
