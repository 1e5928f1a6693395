// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvTask.h"

#include "base/TaskPool.h"
#include "platform/MainThread.h"
#include "tasks/TaskCompletionSink.h"

#include <QLoggingCategory>

#include <exception>

namespace kruv {

namespace {
Q_LOGGING_CATEGORY(taskLog, "kruv.tasks", QtWarningMsg)
}

KruvTask::KruvTask(TaskCompletionSink *queue)
    : m_queue(queue)
    , m_results(std::make_shared<KruvTaskResults>())
    , m_topTextField{QStringLiteral("Waiting..."), RowColor::Default}
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
    markActive();
    m_cancelButton.hidden = false;
    m_progressIndicator.hidden = false;
    m_startTime = QDateTime::currentDateTime();
    rowChanged();
}

void KruvTask::markActive()
{
    m_active = true;
    m_done = false;
}

void KruvTask::markDone()
{
    m_active = false;
    m_done = true;
}

void KruvTask::cancelTask()
{
    if (m_done) {
        return;
    }
    m_cancelled = true;
    stopTask();
}

void KruvTask::stopTask()
{
    markDone();
    if (auto followUp = results()->noteTaskDone(*this); followUp && m_queue) {
        MainThread::post([queue = m_queue, followUp] { queue->addTask(followUp); });
    }
    publish(&KruvTask::setGuiFields);
}

QString KruvTask::description() const
{
    return title();
}

void KruvTask::fail(const QString &reason)
{
    appendResults(reason + u'\n');
    if (!m_cancelled) {
        m_error = true;
    }
}

void KruvTask::failToStart(const QString &reason)
{
    MainThread::post([self = shared_from_this(), this, reason] {
        if (!m_done) {
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
        try {
            work();
        } catch (const std::exception &failure) {
            self->fail(QString::fromUtf8(failure.what()));
            self->endAfterException();
        }
        MainThread::post([last = std::move(self)] {}); // jobs end their lives where they began
    });
}

void KruvTask::endAfterException()
{
    try {
        stopTask();
    } catch (const std::exception &failure) {
        // What failed may be the subclass's own outcome work: without it, then, but never without an end.
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
    if (m_cancelled) {
        m_textField = {QStringLiteral("Canceled"), RowColor::Red};
    } else if (m_error) {
        qCInfo(taskLog, "%s Error", qUtf8Printable(description()));
        m_topTextField.text = QStringLiteral("Error");
        m_textField.color = RowColor::Red;
        m_progressIndicator.animated = false;
    } else {
        m_textField.color = RowColor::DarkGreen;
        m_topTextField.text = QStringLiteral("Complete");
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
