// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolRun.h"

#include "base/HeldWork.h"
#include "base/SystemError.h"
#include "tasks/DirectTool.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolLaunch.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace kruv {

namespace {

using namespace std::chrono_literals;

/// How long a tool that was asked to end may take before it is killed.
constexpr auto patience = 2s;
/// How long the output is still read of what a tool has left running.
constexpr auto patienceWithTheRest = 100ms;
/// What a tool can have written that was not read when it ended.
constexpr std::size_t largestPipe = 1 << 20; // bytes
/// How long a tool may write on before it is read again, unless it writes much: each waking takes a core from
/// a tool.
constexpr auto betweenPieces = 20ms;
constexpr ssize_t muchOutput = 4096; // bytes
/// Between looks where the system can't tell of a process's end.
constexpr int betweenLooks = 20; // milliseconds

std::string bytesOf(const QString &name)
{
    return QFile::encodeName(name).toStdString();
}

} // namespace

ToolRun::ToolRun(ToolCall call, std::stop_token stop)
    : m_call(std::move(call))
    , m_stop(std::move(stop))
{
}

ToolEnd ToolRun::run(const Reader &read)
{
    HeldWork::wait();
    if (const QString problem = launch(); !problem.isEmpty()) {
        ToolEnd end;
        end.problem = problem;
        return end;
    }
    m_wish.reset(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    {
        const std::stop_callback onWish(m_stop, [this] { eventfd_write(m_wish.get(), 1); });
        m_pauseListener.emplace(HeldWork::pause(), [this](bool on) { suspend(on); });
        follow(read);
        m_pauseListener.reset();
    }
    return reap();
}

QString ToolRun::launch()
{
    if (!ToolCatalog::isLaunchable(m_call.launchPath)) {
        return ToolCatalog::missingToolMessage(m_call.launchPath);
    }
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return ToolCatalog::launchFailureMessage(m_call.launchPath, systemErrorText(errno));
    }
    m_output.reset(ends[0]);
    const Descriptor writer(ends[1]);
    ToolLaunch tool{.program = bytesOf(directProgram(m_call.launchPath, m_call.arguments)),
                    .arguments = {},
                    .environment = ToolEnvironment::entries(m_call.environment),
                    .folder = bytesOf(m_call.folder),
                    .output = writer.get(),
                    .watched = &m_watched};
    std::ranges::transform(m_call.arguments, std::back_inserter(tool.arguments), bytesOf);
    const ToolLaunch::Started started = tool.start();
    if (started.error != 0) {
        const QString reason = systemErrorText(started.error);
        return ToolCatalog::launchFailureMessage(
            m_call.launchPath, started.what.empty() ? reason : m_call.folder + QStringLiteral(": ") + reason);
    }
    m_leader = started.process;
    m_ending.reset(static_cast<int>(syscall(SYS_pidfd_open, m_leader, 0)));
    return {};
}

void ToolRun::follow(const Reader &read)
{
    if (m_call.timeLimit > 0ms) {
        enter(Phase::Running, m_call.timeLimit);
    }
    while (m_output.isOpen() || !m_toolEnded) {
        // A descriptor below 0 is passed over.
        std::array<pollfd, 3> places{pollfd{readsNow() ? m_output.get() : -1, POLLIN, 0},
                                     pollfd{m_toolEnded ? -1 : m_ending.get(), POLLIN, 0},
                                     pollfd{m_endedByUs ? -1 : m_wish.get(), POLLIN, 0}};
        poll(places.data(), places.size(), millisecondsLeft());
        if (places[2].revents != 0) {
            heedWish();
        }
        if (places[0].revents != 0) {
            readPiece(read);
        }
        if (!m_toolEnded && (places[1].revents != 0 || !m_ending.isOpen())) {
            lookForEnd();
        }
        // What a tool has written is read to its end, however slow its reader is.
        const bool stillReads = m_phase == Phase::Abandoned && places[0].revents != 0;
        if (m_deadline && !m_suspendedSince && Clock::now() >= *m_deadline && !stillReads) {
            timeIsUp();
        }
    }
}

void ToolRun::readPiece(const Reader &read)
{
    std::array<char, 65536> buffer;
    const ssize_t count = ::read(m_output.get(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) {
        return;
    }
    if (count <= 0) {
        m_output.reset();
        return;
    }
    m_readNext = count < muchOutput ? Clock::now() + betweenPieces : Clock::time_point();
    m_readAfterwards += m_phase == Phase::Abandoned ? static_cast<std::size_t>(count) : 0;
    if (m_readAfterwards > largestPipe) {
        m_output.reset(); // somebody out of reach writes on
        return;
    }
    const QString piece = m_decoder(QByteArrayView(buffer.data(), count));
    if (!piece.isEmpty()) {
        m_printedText = true;
        read(piece);
    }
}

/// Runs on the thread that begins or ends the pause, so that the tool stands still when that returns.
void ToolRun::suspend(bool on)
{
    kill(-m_leader, on ? SIGSTOP : SIGCONT);
    m_suspended = on;
    eventfd_write(m_wish.get(), 1);
}

void ToolRun::heedWish()
{
    eventfd_t count = 0;
    eventfd_read(m_wish.get(), &count);
    if (m_stop.stop_requested()) {
        ask();
    } else {
        heedPause();
    }
}

/// The time of a pause is not the tool's.
void ToolRun::heedPause()
{
    if (m_suspended) {
        m_suspendedSince = Clock::now();
    } else if (m_suspendedSince) {
        if (m_deadline) {
            *m_deadline += Clock::now() - *m_suspendedSince;
        }
        m_suspendedSince.reset();
    }
}

/// The tool stays a zombie until reap(), so that its group keeps its number.
void ToolRun::lookForEnd()
{
    siginfo_t info{};
    if (waitid(P_PID, static_cast<id_t>(m_leader), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
        info.si_pid == m_leader) {
        m_toolEnded = true;
        enter(Phase::Left, patienceWithTheRest);
    }
}

void ToolRun::ask()
{
    m_endedByUs = true;
    m_pauseListener.reset(); // one that is stopped could not end
    m_suspendedSince.reset();
    if (!m_toolEnded) {
        kill(-m_leader, SIGTERM);
        kill(-m_leader, SIGCONT);
        enter(Phase::Asked, patience);
    }
}

void ToolRun::timeIsUp()
{
    switch (m_phase) {
    case Phase::Running:
        return ask();
    case Phase::Asked:
        m_phase = Phase::Killed;
        m_deadline.reset();
        break;
    case Phase::Left:
        enter(Phase::Abandoned, patienceWithTheRest);
        break;
    case Phase::Abandoned:
        m_output.reset();
        return;
    case Phase::Killed:
        return;
    }
    kill(-m_leader, SIGKILL);
}

void ToolRun::enter(Phase phase, std::chrono::milliseconds patienceWithIt)
{
    m_phase = phase;
    m_deadline = Clock::now() + patienceWithIt;
}

/// What a tool wrote before it ended is read at once.
bool ToolRun::readsNow() const
{
    return m_toolEnded || Clock::now() >= m_readNext;
}

int ToolRun::millisecondsLeft() const
{
    constexpr int noEnd = -1;
    const auto until = [](Clock::time_point moment) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment - Clock::now()).count();
        return static_cast<int>(std::clamp<decltype(left)>(left, 0, 1'000'000));
    };
    int least = m_ending.isOpen() || m_toolEnded ? noEnd : betweenLooks;
    const auto consider = [&least](int wait) { least = least == noEnd ? wait : std::min(least, wait); };
    if (m_deadline && !m_suspendedSince) {
        consider(until(*m_deadline));
    }
    if (m_output.isOpen() && !readsNow()) {
        consider(until(m_readNext));
    }
    return least;
}

ToolEnd ToolRun::reap()
{
    kill(-m_leader, SIGKILL); // what it left running
    m_watched.end();
    int status = 0;
    while (waitpid(m_leader, &status, 0) < 0 && errno == EINTR) {
    }
    ToolEnd end;
    end.printedText = m_printedText;
    if (m_endedByUs) {
        end.kind = ToolEnd::Kind::Ended;
    } else if (WIFSIGNALED(status)) {
        end.kind = ToolEnd::Kind::Signalled;
        end.number = WTERMSIG(status);
    } else {
        end.kind = ToolEnd::Kind::Exited;
        end.number = WEXITSTATUS(status);
    }
    return end;
}

} // namespace kruv
