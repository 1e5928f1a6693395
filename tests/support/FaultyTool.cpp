// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Stands in the place of a tool, runs the real one and spoils what it makes. Called by the tool's name. Some
// argument has a path with a folder "case-N" in it; the file "case-N.fault" beside that folder says "TOOL
// FAULT", and "case-N.log" gets the names of the tools that ran. KRUV_REAL is the folder of the real tools,
// KRUV_BEHIND one of tools in whose place this program stands behind shntool.
//   half garbage wrong64 flip empty   the outputs, or what goes to a pipe, become that; status 0
//   idle           does nothing at all; status 0
//   deletes        whole outputs, which it removes; status 0
//   failed         whole outputs, status 1
//   halfFailed     half of them, status 1
//   crashed        half of them, ends by a signal
//   flood          whole outputs and twenty megabytes of words; status 0
//   keepsPipe      whole outputs; leaves a deaf child that holds the output; status 0
//   silent         whole outputs and not a word; status 0
//   hangs hangsAtEnd deaf   nothing, whole outputs, or half of them and no ear for SIGTERM; never ends, and
//                  says its process in "case-N.hangs"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

using Files = std::map<fs::path, fs::file_time_type>;

std::string contentOf(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The folder "case-N" that an argument names.
fs::path caseOf(char **arguments)
{
    for (; *arguments != nullptr; ++arguments) {
        const std::string text = *arguments;
        const auto begin = text.find("/case-");
        const auto root = text.find('/'); // some tools take "--option=PATH"
        if (begin != std::string::npos) {
            return text.substr(root, text.find('/', begin + 1) - root);
        }
    }
    const std::string here = fs::current_path();
    const auto begin = here.find("/case-");
    return begin == std::string::npos ? "" : here.substr(0, here.find('/', begin + 1));
}

/// What lies in staging folders.
Files stagedFiles(const fs::path &folder)
{
    Files files;
    for (const auto &entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() &&
            entry.path().parent_path().string().find("/.kruv-") != std::string::npos &&
            entry.path().filename() != "lock") {
            files.emplace(entry.path(), entry.last_write_time());
        }
    }
    return files;
}

std::string garbage(std::size_t size)
{
    std::string bytes(size, '\0');
    unsigned state = 12345;
    for (char &byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

std::string spoiled(std::string bytes, const std::string &fault)
{
    const std::size_t middle = bytes.size() / 2;
    if (fault.starts_with("half") || fault == "crashed" || fault == "deaf") {
        bytes.resize(middle);
    } else if (fault == "garbage") {
        bytes = garbage(bytes.size());
    } else if (fault == "wrong64") {
        bytes.replace(middle, 64, garbage(64));
    } else if (fault == "flip" && !bytes.empty()) {
        bytes[middle] = static_cast<char>(bytes[middle] ^ 0x10);
    } else if (fault == "empty" || fault == "deletes") {
        bytes.clear();
    }
    return bytes;
}

void spoilFiles(const fs::path &folder, const Files &before, const std::string &fault)
{
    for (const auto &[path, time] : stagedFiles(folder)) {
        const auto old = before.find(path);
        if (old != before.end() && old->second == time) {
            continue; // an input of this tool
        }
        if (fault == "deletes") {
            fs::remove(path);
        } else if (const std::string bytes = contentOf(path); spoiled(bytes, fault) != bytes) {
            std::ofstream(path, std::ios::binary) << spoiled(bytes, fault);
        }
    }
}

/// Runs the real tool; `output` takes what it writes to standard output where that is a pipe with more than
/// words.
int runReal(const std::string &tool, char **arguments, bool quiet, std::string *output)
{
    std::array<int, 2> ends{-1, -1};
    if (output != nullptr && pipe(ends.data()) != 0) {
        return 127;
    }
    const pid_t child = fork();
    if (child == 0) {
        if (output != nullptr) {
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
            close(ends[1]);
        }
        if (quiet) {
            (void)!std::freopen("/dev/null", "w", stderr);
        }
        const std::string real = std::string(getenv("KRUV_REAL")) + "/" + tool;
        // No tool may find itself spoiled again; shntool finds its decoders spoiled.
        const std::string plain = "/usr/bin:/bin";
        setenv("PATH", (tool == "shntool" ? std::string(getenv("KRUV_BEHIND")) + ":" + plain : plain).c_str(),
               1);
        execv(real.c_str(), arguments);
        execvp(tool.c_str(), arguments);
        _exit(127);
    }
    if (output != nullptr) {
        close(ends[1]);
        std::array<char, 65536> piece{};
        for (ssize_t got = 0; (got = read(ends[0], piece.data(), piece.size())) > 0;) {
            output->append(piece.data(), static_cast<std::size_t>(got));
        }
        close(ends[0]);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128;
}

void flood()
{
    std::string words;
    while (words.size() < 64'000) {
        words += "words that nobody asked for, and no end of them in sight\n";
    }
    for (int piece = 0; piece < 320; ++piece) {
        std::cerr << words;
    }
}

void leaveChild()
{
    if (fork() == 0) {
        std::signal(SIGTERM, SIG_IGN);
        sleep(60);
        _exit(0);
    }
}

[[noreturn]] void hang(const fs::path &folder)
{
    std::ofstream(folder.string() + ".hangs") << getpid() << '\n';
    for (;;) {
        pause();
    }
}

/// Runs the real tool, and spoils and passes on what it makes.
int runSpoiled(const std::string &tool, char **arguments, const fs::path &folder, const std::string &fault)
{
    const Files before = stagedFiles(folder);
    constexpr std::size_t mostWords = 20'000; // bytes; more is audio
    std::string output;
    const int status = runReal(tool, arguments, fault == "silent", &output);
    spoilFiles(folder, before, fault);
    if (output.size() > mostWords) {
        output = spoiled(output, fault);
    } else if (fault == "silent") {
        output.clear();
    }
    std::cout << output << std::flush;
    return status;
}

int misbehave(const std::string &tool, char **arguments, const fs::path &folder, const std::string &fault)
{
    if (fault == "idle") {
        return EXIT_SUCCESS;
    }
    if (fault == "hangs") {
        hang(folder);
    }
    if (fault == "deaf") {
        std::signal(SIGTERM, SIG_IGN);
    }
    const int status = runSpoiled(tool, arguments, folder, fault);
    if (fault == "flood") {
        flood();
    } else if (fault == "keepsPipe") {
        leaveChild();
    } else if (fault == "crashed") {
        std::signal(SIGSEGV, SIG_DFL);
        raise(SIGSEGV);
    } else if (fault == "hangsAtEnd" || fault == "deaf") {
        hang(folder);
    }
    return fault == "failed" || fault == "halfFailed" ? EXIT_FAILURE : status;
}

} // namespace

int main(int, char **arguments)
{
    const std::string tool = fs::path(arguments[0]).filename();
    const fs::path folder = caseOf(arguments);
    std::istringstream plan(contentOf(folder.string() + ".fault"));
    std::string faulty;
    std::string fault;
    plan >> faulty >> fault;
    if (!folder.empty()) {
        std::ofstream(folder.string() + ".log", std::ios::app) << tool << '\n';
    }
    return !folder.empty() && faulty == tool ? misbehave(tool, arguments, folder, fault)
                                             : runReal(tool, arguments, false, nullptr);
}
