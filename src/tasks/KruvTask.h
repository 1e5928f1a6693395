// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvTaskResults.h"
#include "tasks/TaskRow.h"

#include <QDateTime>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

namespace kruv {

class TaskCompletionSink;

/// Base of every job: its status row, its outcome and the result set it writes into.
///
/// Jobs are created, started, shown and destroyed on the main thread and always live in a std::shared_ptr.
/// Work on other threads writes the pending fields (`topTextFieldString`, `textFieldString`,
/// `progressIndicatorValue`) and calls publish(), which has the main thread copy them into the row.
/// Cancelling never sets `error`.
class KruvTask : public std::enable_shared_from_this<KruvTask>
{
public:
    /// `queue` is told when the job ends; it must outlive the job. May be null in tests.
    explicit KruvTask(TaskCompletionSink *queue);
    virtual ~KruvTask();
    KruvTask(const KruvTask &) = delete;
    KruvTask &operator=(const KruvTask &) = delete;

    /// Makes the row look started. Subclasses then hand their work to the pool or start their tool. Main
    /// thread.
    virtual void startTask();
    /// Marks the job cancelled and runs stopTask(); does nothing to a job that has ended. Main thread.
    virtual void cancelTask();
    /// The end-of-job step: flags, set bookkeeping, follow-up job, final row. Does not tell the queue: a
    /// subclass extends it with its outcome work before and notifyQueue() after. Any thread.
    virtual void stopTask();
    /// Text that identifies the job in logs.
    virtual QString description() const;

    TaskCompletionSink *queue() const { return m_queue; }
    std::shared_ptr<KruvTaskResults> results() const;
    /// Replaces the private set the job was made with; the caller adds the job to the new one.
    void setResults(std::shared_ptr<KruvTaskResults> results);
    QString title() const;
    void setTitle(const QString &title);
    QDateTime startTime() const { return m_startTime; }

    bool isActive() const { return m_active; }
    bool isDone() const { return m_done; }
    bool error() const { return m_error; }
    void setError(bool error) { m_error = error; }
    bool cancelled() const { return m_cancelled; }
    void setCancelled(bool cancelled) { m_cancelled = cancelled; }
    bool deleteOriginal() const { return m_deleteOriginal; }
    void setDeleteOriginal(bool deleteOriginal) { m_deleteOriginal = deleteOriginal; }

    QString topTextFieldString() const;
    void setTopTextFieldString(const QString &text);
    QString textFieldString() const;
    void setTextFieldString(const QString &text);
    double progressIndicatorValue() const;
    void setProgressIndicatorValue(double percent);

    // The row. Main thread only.
    const RowText &textField() const { return m_textField; }
    const RowText &topTextField() const { return m_topTextField; }
    const RowProgress &progressIndicator() const { return m_progressIndicator; }
    const RowButton &cancelButton() const { return m_cancelButton; }

    // Copies of pending fields into the row. Main thread only; other threads go through publish().
    void updateStatus();
    void setTopTextFieldValue();
    void setTextFieldValue();
    void setProgressIndicatorValueInGui();
    void setCombinedStatus();
    void startIndeterminateProgressBar();
    void setGuiFields();

    /// Runs one of the copy operations on the main thread without waiting (at once when already there).
    void publish(void (KruvTask::*copy)());

    /// The source and the output of the job as a person knows them, for messages. Empty where it has none.
    virtual QString inputPath() const { return {}; }
    virtual QString outputPath() const { return {}; }

    /// Ends a job that could not be started: appends `reason`, marks it failed and tells the queue, all
    /// through the event loop, so that any number of instant failures needs no stack. Main thread.
    void failToStart(const QString &reason);

protected:
    /// Takes the place of all outcome work for a job that could not be started. Main thread.
    virtual void neverStarted() {}
    void appendResults(const QString &text);
    void markActive();
    void markDone();
    void showRunningRow();
    /// Submits `work` to the shared background pool; the job stays alive until it returns. An exception that
    /// leaves `work` fails the job, says why in its results and ends it through stopTask().
    void runInBackground(std::function<void()> work);
    /// Appends `reason` and marks the job failed, unless it was cancelled.
    void fail(const QString &reason);
    /// Tells the queue on the main thread, waiting for it.
    void notifyQueue();
    void rowChanged();

private:
    void doStartTaskOnMainThread();
    void endAfterException();

    TaskCompletionSink *const m_queue;
    std::atomic<bool> m_active = false;
    std::atomic<bool> m_done = false;
    std::atomic<bool> m_cancelled = false;
    std::atomic<bool> m_error = false;
    std::atomic<bool> m_deleteOriginal = false;

    mutable std::mutex m_fieldsLock;
    std::shared_ptr<KruvTaskResults> m_results;
    QString m_title;
    QString m_topTextFieldString;
    QString m_textFieldString;
    double m_progressIndicatorValue = 0.0;

    QDateTime m_startTime;
    RowText m_textField;
    RowText m_topTextField;
    RowProgress m_progressIndicator;
    RowButton m_cancelButton;
};

} // namespace kruv
