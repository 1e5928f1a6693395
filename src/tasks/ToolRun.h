// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/Descriptor.h"
#include "base/WorkPause.h"
#include "tasks/ToolEnd.h"
#include "tasks/ToolEnvironment.h"
#include "tasks/WatchedTool.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringDecoder>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <stop_token>
#include <sys/types.h>

namespace kruv {

/// What to run.
struct ToolCall
{
    QString launchPath;
    QStringList arguments;
    /// Working directory of the tool; empty means inherited.
    QString folder = {};
    QProcessEnvironment environment = ToolEnvironment::base();
    /// The tool is ended when it takes longer. Zero: it may take as long as it likes.
    std::chrono::milliseconds timeLimit = {};
};

/// The one way a tool is started, read, timed and ended. Blocks the calling thread; not for the main thread.
///
/// The tool has a session of its own, so nothing that it starts is out of reach, no terminal can stop it, and
/// Ctrl-C stays the program's own. Standard input is /dev/null: a question is a failure. Both output streams
/// come through one pipe. It is ended by asking, so that it can remove what it was writing, and by force
/// where it doesn't listen. While its job's work is paused (HeldWork), it is stopped with all of its group,
/// and no time runs. When it has ended, whatever it left running is ended too; when the program dies, so do
/// the tool and all that it started.
class ToolRun
{
public:
    /// One piece of output, as one read returned it, perhaps of many lines; a character cut in two by a read
    /// is put together again.
    using Reader = std::function<void(const QString &piece)>;

    /// `stop` ends the tool.
    explicit ToolRun(ToolCall call, std::stop_token stop = {});
    ToolRun(const ToolRun &) = delete;
    ToolRun &operator=(const ToolRun &) = delete;

    /// Returns when the tool has ended and is gone. `read` is called on this thread, also for what a tool
    /// that was told to end still says.
    ToolEnd run(const Reader &read);

private:
    using Clock = std::chrono::steady_clock;

    /// What happens when the time is up: each phase leads to the next.
    enum class Phase {
        /// It is asked to end, where it has a time limit.
        Running,
        /// It was asked; then it is killed.
        Asked,
        Killed,
        /// It has ended, but something holds its output open; then that is killed.
        Left,
        /// That was killed; then nobody listens any more.
        Abandoned
    };

    QString launch();
    void follow(const Reader &read);
    void readPiece(const Reader &read);
    bool readsNow() const;
    void suspend(bool on);
    void heedWish();
    void heedPause();
    void lookForEnd();
    void ask();
    void timeIsUp();
    void enter(Phase phase, std::chrono::milliseconds patience);
    int millisecondsLeft() const;
    ToolEnd reap();

    const ToolCall m_call;
    const std::stop_token m_stop;
    pid_t m_leader = 0;
    WatchedTool m_watched;
    Descriptor m_output;
    Descriptor m_ending; // readable once the tool has ended
    Descriptor m_wish;   // readable once somebody wants something of it
    std::optional<WorkPause::Listener> m_pauseListener;
    std::atomic<bool> m_suspended = false;
    std::optional<Clock::time_point> m_suspendedSince;
    QStringDecoder m_decoder{QStringDecoder::Utf8};
    Phase m_phase = Phase::Running;
    std::optional<Clock::time_point> m_deadline;
    Clock::time_point m_readNext;
    bool m_toolEnded = false;
    bool m_endedByUs = false;
    bool m_printedText = false;
    std::size_t m_readAfterwards = 0; // bytes, once what the tool left was killed
};

} // namespace kruv
