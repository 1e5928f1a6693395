// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StagedTask.h"

#include "base/PathNames.h"
#include "platform/MainThread.h"
#include "tasks/DirectTool.h"
#include "tasks/OriginalFile.h"
#include "tasks/OutputWatch.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolEnvironment.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStringDecoder>

#include <exception>
#include <stdexcept>
#include <unistd.h>

namespace kruv {

namespace {

/// Ends a tool that is no longer wanted: by asking, so that it can remove what it was writing, and by force
/// where it doesn't listen.
class ToolEnd
{
public:
    void ask(QProcess &process)
    {
        if (!m_asked) {
            m_asked = true;
            m_patience.setRemainingTime(patienceMilliseconds);
            process.terminate();
        } else if (m_patience.hasExpired()) {
            process.kill();
        }
    }

private:
    static constexpr int patienceMilliseconds = 2000;
    bool m_asked = false;
    QDeadlineTimer m_patience;
};

/// Takes the tool out of the terminal's hands. It has nobody to ask: a question is a failure here. And some
/// tools end at Ctrl-C even where it was ignored for them, which would pass for a failure.
void detachFromTerminal(QProcess &process)
{
    process.setInputChannelMode(QProcess::ManagedInputChannel);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setChildProcessModifier([inherited = process.childProcessModifier()] {
        inherited();
        setpgid(0, 0);
    });
}

} // namespace

StagedTask::StagedTask(TaskCompletionSink *queue, const QString &fileName)
    : KruvTask(queue)
    , m_fileName(fileName)
    , m_environment(ToolEnvironment::base())
{
    setTitle(PathNames::lastPathComponent(fileName));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void StagedTask::appendToPATH(const QString &folder)
{
    ToolEnvironment::appendToPath(m_environment, folder);
}

void StagedTask::startTask()
{
    KruvTask::startTask();
    runInBackground([this] { doSteps(); });
}

void StagedTask::doSteps()
{
    try {
        if (mayGoOn()) {
            doStartTask();
        }
    } catch (const std::exception &failure) {
        fail(QString::fromUtf8(failure.what()));
    }
    stopTask();
}

void StagedTask::cancelTask()
{
    if (isActive()) {
        setCancelled(true); // the steps see it, and the job ends with them
    } else {
        KruvTask::cancelTask();
    }
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
    ToolCatalog::requireLaunchable(launchPath);
    QProcess process;
    process.setProcessEnvironment(ToolEnvironment::unbuffered(m_environment));
    if (!folder.isEmpty()) {
        process.setWorkingDirectory(folder);
    }
    ToolEnvironment::prepare(process);
    detachFromTerminal(process);
    process.start(directProgram(launchPath, arguments), arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted(-1)) {
        throw std::runtime_error(
            ToolCatalog::launchFailureMessage(launchPath, process.errorString()).toStdString());
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    ToolEnd toolEnd;
    bool printedText = false;
    constexpr int betweenLooks = 50; // milliseconds
    while (process.state() != QProcess::NotRunning || process.bytesAvailable() > 0) {
        if (process.bytesAvailable() == 0) {
            process.waitForReadyRead(betweenLooks);
        }
        // Read to the end also when nobody wants it: a tool that can't print never ends.
        const QString piece = decoder(process.readAll());
        if (!mayGoOn()) {
            toolEnd.ask(process);
        } else if (!piece.isEmpty()) {
            printedText = true;
            read(piece);
        }
    }
    const int exitStatus = process.exitCode();
    if (mayGoOn() && exitStatus != 0) {
        setError(true);
        appendResults(ToolCatalog::silentFailureMessage(
            launchPath, exitStatus, process.exitStatus() == QProcess::CrashExit, printedText));
    }
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

bool StagedTask::outputIsFree()
{
    if (QFileInfo::exists(outputPath())) {
        fail(QStringLiteral("The output %1 already exists and was left as it is.").arg(outputPath()));
        return false;
    }
    return true;
}

void StagedTask::deleteSource(const OutputWatch &output)
{
    if (m_fileName != outputPath() && !OutputWatch::isSameFile(m_fileName, outputPath())) {
        OriginalFile::deleteAfterSuccess(*this, m_fileName, output);
    }
}

} // namespace kruv
