// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Runs a command whose disk is full, or fails, at a chosen moment: watched_disk COMMAND ARGUMENT...
// What the command and all that it starts do to files in folders named "case-N" is counted, each folder for
// itself: writes, new files and folders, renames, links, what goes to the disk. The file "case-N.fault"
// beside that folder says which of them fails, by number; from then on there is no space in that folder, for
// writes and new files. "case-N.log" gets what was done, one a line. Ends as the command ended, or with 77
// where the system doesn't let system calls be watched.

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <map>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int notWatched = 77;

enum class Place { Descriptor, Path, PathAt };

/// A system call that changes a file.
struct Change
{
    int number;
    const char *name;
    Place place;
    unsigned argument; // where the descriptor or the path stands; a descriptor of PathAt stands before it
    bool takesSpace;
};

constexpr Change changes[] = {
    {SYS_write, "write", Place::Descriptor, 0, true},
    {SYS_pwrite64, "pwrite", Place::Descriptor, 0, true},
    {SYS_writev, "write", Place::Descriptor, 0, true},
    {SYS_pwritev, "write", Place::Descriptor, 0, true},
    {SYS_sendfile, "write", Place::Descriptor, 0, true},
    {SYS_copy_file_range, "write", Place::Descriptor, 2, true},
    {SYS_fallocate, "fallocate", Place::Descriptor, 0, true},
    {SYS_ftruncate, "truncate", Place::Descriptor, 0, false},
    {SYS_fsync, "fsync", Place::Descriptor, 0, false},
    {SYS_fdatasync, "fsync", Place::Descriptor, 0, false},
    {SYS_syncfs, "syncfs", Place::Descriptor, 0, false},
    {SYS_statfs, "space", Place::Path, 0, false},
    {SYS_fstatfs, "space", Place::Descriptor, 0, false},
    {SYS_openat, "create", Place::PathAt, 1, true},
    {SYS_mkdirat, "mkdir", Place::PathAt, 1, true},
    {SYS_linkat, "link", Place::PathAt, 3, true},
    {SYS_renameat2, "rename", Place::PathAt, 3, false},
#ifdef SYS_open
    {SYS_open, "create", Place::Path, 0, true},
    {SYS_creat, "create", Place::Path, 0, true},
    {SYS_mkdir, "mkdir", Place::Path, 0, true},
    {SYS_link, "link", Place::Path, 1, true},
    {SYS_rename, "rename", Place::Path, 1, false},
    {SYS_renameat, "rename", Place::PathAt, 3, false},
#endif
};

/// The filter: all of these ask; opening asks only where it may create.
std::vector<sock_filter> filter()
{
    std::vector<sock_filter> program{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (const Change &change : changes) {
        const auto number = static_cast<std::uint32_t>(change.number);
        if (std::strcmp(change.name, "create") == 0) {
            const auto flags =
                static_cast<std::uint32_t>(offsetof(seccomp_data, args) + 8 * (change.argument + 1));
            program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 4));
            program.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, flags));
            program.push_back(BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, O_CREAT, 0, 1));
            program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
            program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
        } else {
            program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 1));
            program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
        }
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    return program;
}

/// In the child: has its system calls watched from here on. The descriptor that the questions come from, or
/// below 0.
int beWatched()
{
    std::vector<sock_filter> program = filter();
    const sock_fprog given{static_cast<unsigned short>(program.size()), program.data()};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
        return -1;
    }
    return static_cast<int>(
        syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &given));
}

union Control {
    std::array<char, CMSG_SPACE(sizeof(int))> bytes;
    cmsghdr aligned;
};

void sendDescriptor(int channel, int descriptor)
{
    char byte = descriptor < 0 ? 'n' : 'y';
    iovec content{&byte, 1};
    Control control{};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    if (descriptor >= 0) {
        message.msg_control = control.bytes.data();
        message.msg_controllen = control.bytes.size();
        cmsghdr *header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(header), &descriptor, sizeof(int));
    }
    sendmsg(channel, &message, 0);
}

int receiveDescriptor(int channel)
{
    char byte = 0;
    iovec content{&byte, 1};
    Control control{};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control.bytes.data();
    message.msg_controllen = control.bytes.size();
    int descriptor = -1;
    if (recvmsg(channel, &message, 0) == 1 && byte == 'y' && CMSG_FIRSTHDR(&message)) {
        std::memcpy(&descriptor, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof(int));
    }
    return descriptor;
}

std::string linkTarget(const std::string &link)
{
    std::array<char, PATH_MAX> target{};
    const ssize_t length = readlink(link.c_str(), target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length)) : std::string();
}

std::string textAt(pid_t process, std::uint64_t address)
{
    const std::string memory = "/proc/" + std::to_string(process) + "/mem";
    const int file = open(memory.c_str(), O_RDONLY | O_CLOEXEC);
    std::string text;
    std::array<char, 256> piece{};
    while (file >= 0 && text.size() < PATH_MAX) {
        // Not beyond a page, of which the next one may not be there.
        const std::uint64_t here = address + text.size();
        const std::size_t wanted = std::min<std::uint64_t>(piece.size(), 4096 - here % 4096);
        const ssize_t got = pread(file, piece.data(), wanted, static_cast<off_t>(here));
        if (got <= 0) {
            break;
        }
        const auto end = std::find(piece.data(), piece.data() + got, '\0');
        text.append(piece.data(), end);
        if (end != piece.data() + got) {
            break;
        }
    }
    if (file >= 0) {
        close(file);
    }
    return text;
}

/// The path that a system call is about.
std::string pathOf(const seccomp_notif &question, const Change &change)
{
    const auto process = static_cast<pid_t>(question.pid);
    const std::string proc = "/proc/" + std::to_string(process);
    const auto descriptor = [&](unsigned argument) {
        return linkTarget(proc + "/fd/" + std::to_string(static_cast<int>(question.data.args[argument])));
    };
    if (change.place == Place::Descriptor) {
        return descriptor(change.argument);
    }
    const std::string path = textAt(process, question.data.args[change.argument]);
    if (path.empty() || path.front() == '/') {
        return path;
    }
    const bool isHere =
        change.place == Place::Path || static_cast<int>(question.data.args[change.argument - 1]) == AT_FDCWD;
    return (isHere ? linkTarget(proc + "/cwd") : descriptor(change.argument - 1)) + '/' + path;
}

/// Whether a write goes into what the file has already.
bool isInside(const seccomp_notif &question, const Change &change, const std::string &path)
{
    const std::string kind = change.name;
    if (question.data.nr != SYS_write && question.data.nr != SYS_pwrite64) {
        return false;
    }
    std::uint64_t offset = question.data.args[3];
    if (kind == "write") {
        std::ifstream info("/proc/" + std::to_string(question.pid) + "/fdinfo/" +
                           std::to_string(static_cast<int>(question.data.args[0])));
        std::string word;
        info >> word >> offset;
    }
    std::error_code error;
    const auto size = fs::file_size(path, error);
    return !error && offset + question.data.args[2] <= size;
}

/// Answers a question for the space on a disk: there is none.
bool tellOfNoSpace(const seccomp_notif &question, const std::string &path)
{
    struct statfs volume = {};
    const std::string memory = "/proc/" + std::to_string(question.pid) + "/mem";
    const int file = open(memory.c_str(), O_WRONLY | O_CLOEXEC);
    if (file < 0 || statfs(path.c_str(), &volume) != 0) {
        return false;
    }
    volume.f_bfree = 0;
    volume.f_bavail = 0;
    const bool told = pwrite(file, &volume, sizeof volume, static_cast<off_t>(question.data.args[1])) ==
                      static_cast<ssize_t>(sizeof volume);
    close(file);
    return told;
}

/// What was done in one folder.
class Folder
{
public:
    explicit Folder(const std::string &path)
        : m_path(path)
        , m_log(path + ".log")
    {
        std::ifstream(path + ".fault") >> m_fault;
    }
    bool isFull() const { return m_fault > 0 && m_count >= m_fault; }
    bool fails(const Change &change, bool takesSpace, const std::string &path)
    {
        ++m_count;
        const bool fails = m_count == m_fault || (isFull() && takesSpace);
        m_log << change.name << ' ' << path.substr(m_path.size()) << (fails ? " FAILED" : "") << '\n'
              << std::flush;
        return fails;
    }

private:
    std::string m_path;
    std::ofstream m_log;
    int m_fault = 0;
    int m_count = 0;
};

/// Of a path in a folder "case-N", that folder.
std::string caseOf(const std::string &path)
{
    const auto begin = path.find("/case-");
    const auto end = begin == std::string::npos ? begin : path.find('/', begin + 1);
    return end == std::string::npos ? std::string() : path.substr(0, end);
}

class Watch
{
public:
    /// Fills in what becomes of the system call.
    void answer(const seccomp_notif &question, seccomp_notif_resp &response)
    {
        response.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
        const Change *change = std::find_if(std::begin(changes), std::end(changes), [&](const Change &each) {
            return each.number == question.data.nr;
        });
        const std::string path = pathOf(question, *change);
        const std::string name = caseOf(path + '/');
        if (name.empty()) {
            return;
        }
        Folder &folder = m_folders.try_emplace(name, name).first->second;
        const std::string what = change->name;
        if (what == "space") {
            response.flags = folder.isFull() && tellOfNoSpace(question, path) ? 0U : response.flags;
        } else if ((what != "create" || !fs::exists(path)) &&
                   folder.fails(*change, change->takesSpace && !isInside(question, *change, path), path)) {
            response.flags = 0;
            response.error = -ENOSPC;
        }
    }

private:
    std::map<std::string, Folder> m_folders;
};

void watch(int listener)
{
    Watch watch;
    pollfd ready{listener, POLLIN, 0};
    while (poll(&ready, 1, -1) >= 0 && (ready.revents & POLLIN) != 0) {
        seccomp_notif question{};
        if (ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &question) != 0) {
            continue; // the asking process is gone
        }
        seccomp_notif_resp response{};
        response.id = question.id;
        watch.answer(question, response);
        ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &response);
    }
}

} // namespace

int main(int count, char **arguments)
{
    std::array<int, 2> channel{};
    if (count < 2 || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, channel.data()) != 0) {
        return notWatched;
    }
    const pid_t child = fork();
    if (child == 0) {
        const int listener = beWatched();
        sendDescriptor(channel[1], listener);
        if (listener < 0) {
            _exit(notWatched);
        }
        close(listener);
        execv(arguments[1], arguments + 1);
        _exit(127);
    }
    close(channel[1]);
    if (const int listener = receiveDescriptor(channel[0]); listener >= 0) {
        watch(listener);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
