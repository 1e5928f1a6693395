// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvTask.h"

#include "base/HeldWork.h"
#include "base/TaskPool.h"
#include "platform/MainThread.h"
#include "tasks/TaskCompletionSink.h"
#include "tasks/ToolEnd.h"

#include <QLoggingCategory>

#include <exception>

namespace kruv {

namespace {
Q_LOGGING_CATEGORY(taskLog, "kruv.tasks", QtWarningMsg)
}

KruvTask::KruvTask(TaskCompletionSink *queue)
    : m_queue(queue)
    , m_results(std::make_shared<KruvTaskResults>())
    , m_topTextField{tr("Waiting..."), RowColor::Default}
{
    m_results->addTaskInSet(*this);
}

KruvTask::~KruvTask() = default;

void KruvTask::startTask()
{
    MainThread::run([this] { doStartTaskOnMainThread(); });
}

void KruvTask::doStartTaskOnMainThread()
{
    m_textField.text = title();
    showRunningRow();
}

void KruvTask::showRunningRow()
{
    m_state.start();
    m_cancelButton.hidden = false;
    m_progressIndicator.hidden = false;
    m_startTime = QDateTime::currentDateTime();
    rowChanged();
}

void KruvTask::cancelTask()
{
    switch (m_state.cancel()) {
    case TaskState::Phase::Waiting:
        return stopTask();
    case TaskState::Phase::Running:
        return stopRunning();
    default:
        return; // too late
    }
}

void KruvTask::withdraw()
{
    if (m_state.phase() == TaskState::Phase::Waiting) {
        m_state.setWithdrawn();
        cancelTask();
    }
}

void KruvTask::stopRunning()
{
    stopTools();
}

void KruvTask::stopTask()
{
    if (m_state.end()) {
        results()->noteTaskDone(*this);
        publish(&KruvTask::setGuiFields);
    }
}

QString KruvTask::description() const
{
    return title();
}

EntryRecord KruvTask::plannedEntry() const
{
    const QString output = outputPath();
    return {inputPath(), output, output.isEmpty() ? EntryRecord::Action::Work : EntryRecord::Action::Make};
}

JobOutline KruvTask::outline() const
{
    JobOutline outline;
    if (const QString source = inputPath(); !source.isEmpty()) {
        outline.sources.append(source);
    }
    if (const QString output = outputPath(); !output.isEmpty()) {
        outline.outputs.append(output);
    }
    return outline;
}

QString KruvTask::foreseenFailure()
try {
    foresee();
    return {};
} catch (const std::exception &failure) {
    return QString::fromUtf8(failure.what());
}

void KruvTask::fail(const QString &reason)
{
    results()->appendLine(reason, *this);
    setError(true);
}

void KruvTask::judge(const ToolEnd &end, const QString &launchPath)
{
    if (!cancelled() && !end.succeeded()) {
        setError(true);
        if (const QString complaint = end.complaint(launchPath); !complaint.isEmpty()) {
            results()->appendLine(complaint.trimmed(), *this);
        }
    }
}

void KruvTask::failToStart(const QString &reason)
{
    MainThread::post([self = shared_from_this(), this, reason] {
        if (!isDone()) {
            fail(reason);
            neverStarted();
            KruvTask::stopTask();
            notifyQueue();
        }
    });
}

void KruvTask::runInBackground(std::function<void()> work)
{
    TaskPool::start([self = shared_from_this(), work = std::move(work)]() mutable {
        const HeldWork held(self->workPause(), self->stopToken());
        try {
            work();
        } catch (const std::exception &failure) {
            self->fail(QString::fromUtf8(failure.what()));
        }
        self->endBackgroundWork();
        MainThread::post([last = std::move(self)] {}); // jobs end their lives where they began
    });
}

WorkPause *KruvTask::workPause() const
{
    return m_queue ? m_queue->workPause() : nullptr;
}

void KruvTask::endBackgroundWork()
{
    try {
        stopTask();
    } catch (const std::exception &failure) {
        // What failed is the subclass's own outcome work: without it, then, but never without an end.
        fail(QString::fromUtf8(failure.what()));
        KruvTask::stopTask();
        notifyQueue();
    }
}

void KruvTask::notifyQueue()
{
    if (m_queue) {
        MainThread::run([this] { m_queue->taskCompleted(*this); });
    }
}

void KruvTask::rowChanged()
{
    if (m_queue) {
        m_queue->taskRowChanged(*this);
    }
}

void KruvTask::publish(void (KruvTask::*copy)())
{
    if (MainThread::isCurrent()) {
        (this->*copy)();
    } else {
        MainThread::post([self = shared_from_this(), copy] { (self.get()->*copy)(); });
    }
}

void KruvTask::updateStatus()
{
    m_topTextField.text = topTextFieldString();
    m_progressIndicator.value = progressIndicatorValue();
    rowChanged();
}

void KruvTask::setTopTextFieldValue()
{
    m_topTextField.text = topTextFieldString();
    rowChanged();
}

void KruvTask::setTextFieldValue()
{
    m_textField.text = textFieldString();
    rowChanged();
}

void KruvTask::setProgressIndicatorValueInGui()
{
    m_progressIndicator.value = progressIndicatorValue();
    rowChanged();
}

void KruvTask::setCombinedStatus()
{
    m_textField.text = textFieldString();
    updateStatus();
}

void KruvTask::startIndeterminateProgressBar()
{
    m_progressIndicator.indeterminate = true;
    m_progressIndicator.animated = true;
    rowChanged();
}

void KruvTask::setGuiFields()
{
    if (cancelled()) {
        m_textField = {tr("Canceled"), RowColor::Red};
    } else if (error()) {
        qCInfo(taskLog, "%s Error", qUtf8Printable(description()));
        m_topTextField.text = tr("Error");
        m_textField.color = RowColor::Red;
        m_progressIndicator.animated = false;
    } else {
        m_textField.color = RowColor::DarkGreen;
        const QString told = remarks().join(u' ');
        m_topTextField.text = told.isEmpty() ? tr("Complete") : tr("Complete. %1").arg(told);
        m_progressIndicator.hidden = true;
    }
    m_cancelButton.hidden = true;
    rowChanged();
}

void KruvTask::appendResults(const QString &text)
{
    results()->appendResults(text, *this);
}

std::shared_ptr<KruvTaskResults> KruvTask::results() const
{
    const std::lock_guard lock(m_fieldsLock);
    return m_results;
}

void KruvTask::setResults(std::shared_ptr<KruvTaskResults> results)
{
    const std::lock_guard lock(m_fieldsLock);
    m_results = std::move(results);
}

QString KruvTask::title() const
{
    const std::lock_guard lock(m_fieldsLock);
    return m_title;
}

void KruvTask::setTitle(const QString &title)
{
    const std::lock_guard lock(m_fieldsLock);
    m_title = title;
}

QString KruvTask::topTextFieldString() const
{
    const std::lock_guard lock(m_fieldsLock);
    return m_topTextFieldString;
}

void KruvTask::setTopTextFieldString(const QString &text)
{
    const std::lock_guard lock(m_fieldsLock);
    m_topTextFieldString = text;
}

QString KruvTask::textFieldString() const
{
    const std::lock_guard lock(m_fieldsLock);
    return m_textFieldString;
}

void KruvTask::setTextFieldString(const QString &text)
{
    const std::lock_guard lock(m_fieldsLock);
    m_textFieldString = text;
}

double KruvTask::progressIndicatorValue() const
{
    const std::lock_guard lock(m_fieldsLock);
    return m_progressIndicatorValue;
}

void KruvTask::setProgressIndicatorValue(double percent)
{
    const std::lock_guard lock(m_fieldsLock);
    m_progressIndicatorValue = percent;
}

} // namespace kruv
