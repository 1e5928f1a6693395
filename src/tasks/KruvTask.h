// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/EntryRecord.h"
#include "journal/Receipt.h"
#include "tasks/DamageNote.h"
#include "tasks/JobOutline.h"
#include "tasks/KruvTaskResults.h"
#include "tasks/ProofNote.h"
#include "tasks/TaskRow.h"
#include "tasks/TaskState.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>

namespace kruv {

class TaskCompletionSink;
class WorkPause;
struct ToolEnd;

/// Base of every job: its status row, its outcome and the result set it writes into.
///
/// Jobs are created, started, shown and destroyed on the main thread and always live in a std::shared_ptr.
/// Work on other threads writes the pending fields (`topTextFieldString`, `textFieldString`,
/// `progressIndicatorValue`) and calls publish(), which has the main thread copy them into the row.
/// Cancelling never sets `error`.
class KruvTask : public std::enable_shared_from_this<KruvTask>
{
    Q_DECLARE_TR_FUNCTIONS(kruv::KruvTask)
public:
    /// `queue` is told when the job ends; it must outlive the job. May be null in tests.
    explicit KruvTask(TaskCompletionSink *queue);
    virtual ~KruvTask();
    KruvTask(const KruvTask &) = delete;
    KruvTask &operator=(const KruvTask &) = delete;

    /// Makes the row look started. Subclasses then hand their work to the pool or start their tool. Main
    /// thread.
    virtual void startTask();
    /// Cancels the job. One that waits has ended with that; one that runs ends when its work does, which
    /// stopRunning() hurries. Does nothing to a job whose work is as good as done. Main thread.
    virtual void cancelTask();
    /// Cancels one that waits, for good. Main thread.
    void withdraw();
    /// The end-of-job step, once in a job's life: state, set bookkeeping, final row. Does not tell the queue:
    /// a subclass extends it with its outcome work before and notifyQueue() after. Any thread.
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

    bool isActive() const { return !isDone() && m_state.phase() != TaskState::Phase::Waiting; }
    bool isDone() const { return m_state.phase() == TaskState::Phase::Ended; }
    bool error() const { return m_state.failed(); }
    /// Never fails a job that was cancelled.
    void setError(bool error) { m_state.setFailed(error); }
    bool cancelled() const { return m_state.cancelled(); }
    const TaskState &state() const { return m_state; }
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
    /// What a person should know of a job that went well all the same, a sentence each.
    virtual QStringList remarks() const { return {}; }
    /// Of a job that has ended well: whether it has any. Main thread.
    bool leavesRemarks() const { return isDone() && !error() && !cancelled() && !remarks().isEmpty(); }
    /// Where the source is damaged, of a job that was to go on all the same and had to.
    virtual std::optional<DamageNote> damage() const { return {}; }
    /// Of a job that has ended; empty where it was not to prove anything.
    virtual ProofNote proof() const { return {}; }
    /// What it is to do, for the journal. Before it starts.
    virtual EntryRecord plannedEntry() const;
    /// The files that it is about. Before it starts.
    virtual JobOutline outline() const;
    /// Why it would fail if it started now, a sentence; empty where nothing speaks against it. Reads the
    /// beginnings of its sources and makes nothing. Any thread; of a job that is not going to start.
    QString foreseenFailure();
    /// The bytes that it will make, once foreseenFailure() has looked; 0 where that is unknown.
    virtual qint64 foreseenBytes() const { return 0; }
    /// How long it will take, in any measure that is one for all jobs of a command; 0 where that is unknown.
    virtual qint64 estimatedWork() const { return 0; }
    /// What it left behind. Of a job that has ended; nothing where it gave no file its name.
    virtual std::optional<Receipt> receipt() const { return std::nullopt; }

    /// Takes down what the job is about to leave behind; when it returns, no kill loses that. Any thread.
    using Forecast = std::function<void(Receipt)>;
    void setForecast(Forecast forecast) { m_forecast = std::move(forecast); }

    /// How to make this job once more. Jobs without it can't be tried again.
    using Maker = std::function<std::shared_ptr<KruvTask>()>;
    void setMaker(Maker maker) { m_maker = std::move(maker); }
    /// Of a job that has ended: whether it failed, made nothing, and can be made once more.
    bool canBeTriedAgain() const { return isDone() && error() && m_maker && !receipt(); }
    std::shared_ptr<KruvTask> madeAgain() const { return m_maker(); }

    /// Ends a job that could not be started: appends `reason`, marks it failed and tells the queue, all
    /// through the event loop, so that any number of instant failures needs no stack. Main thread.
    void failToStart(const QString &reason);

protected:
    /// Throws what foreseenFailure() says.
    virtual void foresee() {}
    /// Takes the place of all outcome work for a job that could not be started. Main thread.
    virtual void neverStarted() {}
    void appendResults(const QString &text);
    void showRunningRow();
    /// Submits `work` to the shared background pool and calls stopTask() there when it is done; the job stays
    /// alive until then. What `work` throws fails the job and is said in its results.
    void runInBackground(std::function<void()> work);
    /// Begins the part of the work that is not given up any more, such as giving a file its name. False where
    /// it must not begin, because the job was cancelled or has failed. Any thread.
    bool startFinishing() { return m_state.startFinishing(); }
    /// Main thread. Tells the work of a running job that it is not wanted any more: here by stopToken().
    virtual void stopRunning();
    /// What holds this job's work for a while, or null. Any thread.
    WorkPause *workPause() const;
    /// Ends the tools that run with it.
    std::stop_token stopToken() const { return m_stop.get_token(); }
    void stopTools() { m_stop.request_stop(); }
    /// Says why, on a line of its own, and marks the job failed, unless it was cancelled.
    void fail(const QString &reason);
    /// Books how a tool of the job ended: all but status 0 fails the job, with words where the tool had none.
    /// The tool of a cancelled job may end as it likes.
    void judge(const ToolEnd &end, const QString &launchPath);
    /// For what a kill must not leave without a way back. Blocks. Any thread.
    void foretell(Receipt receipt) const
    {
        if (m_forecast) {
            m_forecast(std::move(receipt));
        }
    }
    void noteDoneAllTheSame() { m_state.setDoneAllTheSame(); }
    /// It was cancelled before what it was asked for was done.
    bool wasStopped() const { return cancelled() && !m_state.doneAllTheSame(); }
    /// Tells the queue on the main thread, waiting for it.
    void notifyQueue();
    void rowChanged();

private:
    void doStartTaskOnMainThread();
    void endBackgroundWork();

    TaskCompletionSink *const m_queue;
    TaskState m_state;
    std::stop_source m_stop;
    std::atomic<bool> m_deleteOriginal = false;
    Forecast m_forecast;
    Maker m_maker;

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
