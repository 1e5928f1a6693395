// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ChildProcess.h"

#include "File.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

constexpr int cannotExecute = 126;

// Seconds that a child which was asked to end has for it. Whoever asked us is more patient.
constexpr unsigned patience = 1;

// Shared with the signal handlers.
volatile sig_atomic_t receivedSignal = 0;
volatile sig_atomic_t childGroup = 0;

void tellGroup(int signal)
{
    const int savedErrno = errno;
    if (childGroup > 0) {
        kill(-static_cast<pid_t>(childGroup), signal);
    }
    errno = savedErrno;
}

void passSignalOn(int signal)
{
    receivedSignal = signal;
    tellGroup(signal);
    alarm(patience);
}

void endByForce(int)
{
    tellGroup(SIGKILL);
}

void ignoreBrokenPipe(int) {}

constexpr std::array forwardedSignals{SIGTERM, SIGINT, SIGHUP};

sigset_t forwardedSet()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : forwardedSignals) {
        sigaddset(&set, signal);
    }
    return set;
}

bool samePlace(int one, int other)
{
    struct stat a;
    struct stat b;
    return fstat(one, &a) == 0 && fstat(other, &b) == 0 && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// One stream of the child on its way out.
struct Relay
{
    File source;
    int target;
    TextReplacer replacer;
    std::string failureWords;
    bool *saidItFailed;
    std::string recent = {};

    // False at the end of the stream; `broken` is set when nobody reads the target any more.
    bool passOn(bool &broken)
    {
        std::array<char, 65536> buffer;
        const auto count = read(source.descriptor(), buffer.data(), buffer.size());
        if (count < 0) {
            return errno == EINTR;
        }
        const auto text =
            count > 0 ? replacer.feed({buffer.data(), static_cast<std::size_t>(count)}) : replacer.flush();
        lookForFailure(text);
        if (!broken && !writeAll(target, text)) {
            broken = errno == EPIPE;
        }
        return count > 0;
    }

    // The words may come in two pieces.
    void lookForFailure(const std::string &text)
    {
        recent += text;
        *saidItFailed =
            *saidItFailed || (!failureWords.empty() && recent.find(failureWords) != std::string::npos);
        recent.erase(0, recent.size() - std::min(recent.size(), failureWords.size()));
    }
};

} // namespace

int execute(const ChildCommand &command)
{
    std::vector<char *> words{const_cast<char *>(command.name.c_str())};
    for (const auto &argument : command.arguments) {
        words.push_back(const_cast<char *>(argument.c_str()));
    }
    words.push_back(nullptr);
    execv(command.program.c_str(), words.data());
    const int error = errno;
    complain(baseName(command.name), command.program + ": " + strerror(error));
    return error == ENOENT ? programNotFound : cannotExecute;
}

void endBySignal(int signal)
{
    // The tool has left its own core file, if any was wanted.
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(signal, &action, nullptr);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signal);
    sigprocmask(SIG_UNBLOCK, &set, nullptr);
    raise(signal);
    constexpr int signalBase = 128;
    _exit(signalBase + signal);
}

// Handlers instead of SIG_IGN where nothing is to happen: handlers don't survive execv, so the tool starts
// clean.
void catchSignals()
{
    struct sigaction action = {};
    sigemptyset(&action.sa_mask);
    for (const int signal : forwardedSignals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) { // "nohup" and the like stay in force
            action.sa_handler = passSignalOn;
            sigaction(signal, &action, nullptr);
        }
    }
    action.sa_handler = ignoreBrokenPipe;
    sigaction(SIGPIPE, &action, nullptr);
    action.sa_handler = endByForce;
    sigaction(SIGALRM, &action, nullptr);
    // Whoever wants us killed when he dies is served as well by being asked: nothing of ours outlives it, and
    // no temporary file is left.
    int wanted = 0;
    if (prctl(PR_GET_PDEATHSIG, &wanted) == 0 && wanted != 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
    }
}

void dieWithParent()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

ChildProcess::ChildProcess(ChildCommand command)
    : m_command(std::move(command))
{
}

bool ChildProcess::run()
{
    const bool relayed = !m_command.replacements.empty();
    const bool joined = relayed && samePlace(STDOUT_FILENO, STDERR_FILENO);
    int output[2] = {-1, -1};
    int errors[2] = {-1, -1};
    if ((relayed && pipe2(output, O_CLOEXEC) != 0) || (relayed && !joined && pipe2(errors, O_CLOEXEC) != 0)) {
        complain(baseName(m_command.name), strerror(errno));
        m_exitStatus = cannotExecute;
        return false;
    }
    const sigset_t forwarded = forwardedSet();
    sigset_t before;
    sigprocmask(SIG_BLOCK, &forwarded, &before);
    catchSignals();
    File outputWriter(output[1]);
    File errorWriter(errors[1]);
    if (receivedSignal != 0) {
        sigprocmask(SIG_SETMASK, &before, nullptr);
        return false;
    }
    const pid_t parent = getpid();
    m_child = fork();
    if (m_child == 0) {
        setpgid(0, 0);
        dieWithParent();
        if (getppid() != parent) {
            _exit(cannotExecute);
        }
        sigprocmask(SIG_SETMASK, &before, nullptr);
        startChild(output[1], joined ? output[1] : errors[1]);
    }
    if (m_child < 0) {
        complain(baseName(m_command.name), strerror(errno));
        m_exitStatus = cannotExecute;
        return false;
    }
    setpgid(m_child, m_child);
    childGroup = m_child;
    sigprocmask(SIG_SETMASK, &before, nullptr);
    outputWriter.close();
    errorWriter.close();
    if (relayed) {
        relayOutput(output[0], errors[0]);
    }
    awaitChild();
    if (m_saidItFailed && m_exitStatus == EXIT_SUCCESS) {
        m_exitStatus = EXIT_FAILURE;
    }
    return true;
}

void ChildProcess::startChild(int outputPipe, int errorPipe) const
{
    if (outputPipe >= 0) {
        dup2(outputPipe, STDOUT_FILENO);
        dup2(errorPipe, STDERR_FILENO);
    }
    if (!m_command.workingFolder.empty() && chdir(m_command.workingFolder.c_str()) != 0) {
        complain(baseName(m_command.name), m_command.workingFolder + ": " + strerror(errno));
        _exit(cannotExecute);
    }
    _exit(execute(m_command));
}

void ChildProcess::relayOutput(int outputEnd, int errorEnd)
{
    std::vector<Relay> relays;
    const auto add = [&](int source, int target) {
        relays.push_back({File(source), target, TextReplacer(m_command.replacements), m_command.failureWords,
                          &m_saidItFailed});
    };
    add(outputEnd, STDOUT_FILENO);
    if (errorEnd >= 0) {
        add(errorEnd, STDERR_FILENO);
    }
    // Ends with the tool, not with the last holder of the pipe: a helper it left behind must not hold us up.
    const File ending(static_cast<int>(syscall(SYS_pidfd_open, m_child, 0)));
    bool ended = false;
    bool broken = false;
    while (!relays.empty()) {
        std::vector<pollfd> places;
        places.reserve(relays.size() + 1);
        for (const auto &relay : relays) {
            places.push_back({relay.source.descriptor(), POLLIN, 0});
        }
        if (!ended) {
            places.push_back({ending.descriptor(), POLLIN, 0});
        }
        const int count = poll(places.data(), places.size(), ended ? 0 : -1);
        if (count == 0) {
            break;
        }
        if (count < 0) {
            continue;
        }
        ended = ended || (places.size() > relays.size() && places.back().revents != 0);
        const bool wasBroken = broken;
        for (std::size_t i = relays.size(); i-- > 0;) {
            if (places[i].revents != 0 && !relays[i].passOn(broken)) {
                relays.erase(relays.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        if (broken && !wasBroken) {
            passSignalOn(SIGTERM);
            receivedSignal = SIGPIPE;
        }
    }
    for (auto &relay : relays) {
        writeAll(relay.target, relay.replacer.flush());
    }
}

void ChildProcess::awaitChild()
{
    // What the tool leaves is ended while its number is still the group's.
    siginfo_t ended{};
    while (waitid(P_PID, static_cast<id_t>(m_child), &ended, WEXITED | WNOWAIT) < 0 && errno == EINTR) {
    }
    tellGroup(SIGKILL);
    childGroup = 0;
    int status = 0;
    while (waitpid(m_child, &status, 0) < 0 && errno == EINTR) {
    }
    m_signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    m_exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
}

bool ChildProcess::endedByItself() const
{
    return m_signal == 0 && receivedSignal == 0;
}

void ChildProcess::endLikewise() const
{
    if (receivedSignal != 0) {
        endBySignal(receivedSignal);
    }
    if (m_signal != 0) {
        endBySignal(m_signal);
    }
    _exit(m_exitStatus);
}

} // namespace kruv::adapters
