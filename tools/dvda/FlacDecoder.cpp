// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FlacDecoder.h"

#include "common/ToolError.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace kruv::dvda {
namespace {

using tools::ToolError;

/// Starts flac with @p output as its standard output; returns 0 or an error number.
int spawnFlac(const std::string &path, int output, pid_t &process)
{
    // RF64, so that audio of more than 4 GiB fits the header.
    const char *arguments[] = {"flac", "-d", "-c", "-s", "--force-rf64-format", "--", path.c_str(), nullptr};

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    // We ignore broken pipes; flac shall die of one when we end first.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    const int error = posix_spawnp(&process, arguments[0], &actions, &attributes,
                                   const_cast<char *const *>(arguments), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

} // namespace

FlacDecoder::FlacDecoder(const std::string &path)
    : m_path(path)
{
    int ends[2] = {};
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        throw ToolError(std::string("cannot make a pipe: ") + std::strerror(errno));
    }
    m_output = std::make_unique<tools::InputStream>(ends[0], path);
    const int error = spawnFlac(path, ends[1], m_process);
    ::close(ends[1]);
    if (error != 0) {
        m_process = -1;
        throw ToolError(path + ": cannot start flac to decode it: " + std::strerror(error));
    }
}

FlacDecoder::~FlacDecoder()
{
    if (m_process < 0) {
        return;
    }
    ::kill(m_process, SIGTERM);
    m_output.reset();
    wait();
}

int FlacDecoder::wait()
{
    int status = 0;
    const pid_t process = std::exchange(m_process, -1);
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

void FlacDecoder::finish()
{
    while (!m_output->readBlock().empty()) {
    }
    const int status = wait();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw ToolError(m_path + ": flac cannot decode it without errors");
    }
}

} // namespace kruv::dvda
