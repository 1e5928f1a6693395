// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Plays an external tool in the engine's tests. The first argument is the mode:
//   print STATUS CHUNK...     prints each chunk by itself (hexadecimal bytes), then ends with STATUS
//   flood MEGABYTES [TEXT]    prints that much and ends with 0; TEXT again and again, else lines
//   die SIGNAL                ends by a signal
//   close MARKER              closes its output, goes on for a moment, makes the file MARKER, ends with 0
//   echo                      prints what standard input holds
//   show                      prints folder, arguments and environment, one a line
//   wait MARKER RELEASE       makes the file MARKER, prints "waiting", ends with 0 once the file RELEASE is
//   there chatter MARKER RELEASE    like wait, but prints without a pause meanwhile stay MARKER makes the
//   file MARKER, goes on until a signal ends it deaf MARKER [chatter]     like stay, but only SIGKILL ends
//   it; prints without a pause where told to leave MARKER [away]       ends with 0, and leaves a deaf child
//   that holds the output; away: and a flooding one
//                             out of its session
// MARKER names the processes, one a line.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

constexpr useconds_t moment = 20'000; // microseconds

void print(const std::string &text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

std::string fromHex(const char *digits)
{
    std::string bytes;
    for (; digits[0] != '\0' && digits[1] != '\0'; digits += 2) {
        bytes += static_cast<char>(std::stoi(std::string(digits, 2), nullptr, 16));
    }
    return bytes;
}

/// Whoever waits for the file finds it complete.
void make(const std::string &path, const std::string &text = std::to_string(getpid()) + "\n")
{
    const std::string unfinished = path + ".part";
    if (std::FILE *file = std::fopen(unfinished.c_str(), "w")) {
        std::fputs(text.c_str(), file);
        std::fclose(file);
        std::rename(unfinished.c_str(), path.c_str());
    }
}

int printChunks(int status, char **chunks)
{
    for (; *chunks != nullptr; ++chunks) {
        print(fromHex(*chunks));
        usleep(moment); // so that each chunk is a read of its own
    }
    return status;
}

int flood(int megabytes, const std::string &text)
{
    std::string block;
    while (block.size() < std::size_t{1024} * 1024) {
        block += text;
    }
    for (int i = 0; i < megabytes; ++i) {
        print(block);
    }
    return 0;
}

int die(int signalNumber)
{
    std::signal(signalNumber, SIG_DFL);
    raise(signalNumber);
    return 1;
}

int closeOutput(const char *marker)
{
    close(STDOUT_FILENO);
    close(STDERR_FILENO);
    usleep(10 * moment);
    make(marker);
    return 0;
}

int echo()
{
    std::string text;
    for (int character = std::getchar(); character != EOF; character = std::getchar()) {
        text += static_cast<char>(character);
    }
    print("read " + std::to_string(text.size()) + " bytes: " + text);
    return 0;
}

int show(char **arguments)
{
    char folder[4096] = {};
    print(std::string("folder=") + (getcwd(folder, sizeof folder) ? folder : "?") + "\n");
    for (; *arguments != nullptr; ++arguments) {
        print(std::string("argument=") + *arguments + "\n");
    }
    for (char **entry = environ; *entry != nullptr; ++entry) {
        print(std::string(*entry) + "\n");
    }
    return 0;
}

int wait(const char *marker, const char *release, bool chatters)
{
    print("waiting");
    make(marker);
    while (access(release, F_OK) != 0) {
        if (chatters) {
            print("and talking on and on ");
        } else {
            usleep(moment / 10);
        }
    }
    return 0;
}

int stay(const char *marker)
{
    make(marker);
    for (;;) {
        pause();
    }
}

[[noreturn]] void beDeaf(bool chatters)
{
    for (const int signalNumber : {SIGTERM, SIGINT, SIGHUP}) {
        std::signal(signalNumber, SIG_IGN);
    }
    alarm(60); // nothing of a test that failed stays for ever
    for (;;) {
        if (chatters) {
            print("and talking on and on ");
        } else {
            pause();
        }
    }
}

int leave(const char *marker, bool away)
{
    print("mine");
    const pid_t child = fork();
    if (child == 0) {
        beDeaf(false);
    }
    const pid_t other = away ? fork() : 0;
    if (away && other == 0) {
        setsid();
        beDeaf(true);
    }
    make(marker, std::to_string(child) + "\n" + (away ? std::to_string(other) + "\n" : std::string()));
    return 0;
}

} // namespace

int main(int count, char **arguments)
{
    const std::string mode = count > 1 ? arguments[1] : "";
    if (mode == "print" && count > 2) {
        return printChunks(std::atoi(arguments[2]), arguments + 3);
    }
    if (mode == "flood" && count > 2) {
        return flood(std::atoi(arguments[2]), count > 3 ? arguments[3] : "the tool can't stop talking\n");
    }
    if (mode == "die" && count > 2) {
        return die(std::atoi(arguments[2]));
    }
    if (mode == "close" && count > 2) {
        return closeOutput(arguments[2]);
    }
    if (mode == "echo") {
        return echo();
    }
    if (mode == "show") {
        return show(arguments + 2);
    }
    if ((mode == "wait" || mode == "chatter") && count > 3) {
        return wait(arguments[2], arguments[3], mode == "chatter");
    }
    if (mode == "stay" && count > 2) {
        return stay(arguments[2]);
    }
    if (mode == "deaf" && count > 2) {
        std::signal(SIGTERM, SIG_IGN);
        make(arguments[2]);
        beDeaf(count > 3);
    }
    if (mode == "leave" && count > 2) {
        return leave(arguments[2], count > 3);
    }
    std::fprintf(stderr, "fake_tool: unknown mode\n");
    return 64;
}
