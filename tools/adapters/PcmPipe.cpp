// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "PcmPipe.h"

#include "AiffStore.h"
#include "ChildProcess.h"
#include "File.h"
#include "StandIn.h"
#include "WavHeader.h"
#include "WvunpackAdapter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

using HeaderChange = std::string (*)(std::string);

// Reads on until the header is whole, at most `limit` bytes.
std::string readHeader(int input)
{
    constexpr std::size_t limit = 1 << 20;
    std::string start;
    std::array<char, 4096> buffer;
    while (start.size() < limit && !WavHeader::parse(start)) {
        const auto count = read(input, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0 ||
            (start.empty() &&
             std::string_view(buffer.data(), static_cast<std::size_t>(count)).substr(0, 4) != "RIFF")) {
            start.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
            break;
        }
        start.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return start;
}

// Everything that is left of `input`, inside the kernel where one side is a pipe.
bool copyRest(int input, int output)
{
    constexpr std::size_t piece = 1 << 20;
    for (;;) {
        const auto count = splice(input, nullptr, output, nullptr, piece, SPLICE_F_MOVE);
        if (count == 0) {
            return true;
        }
        if (count < 0 && errno != EINTR) {
            break;
        }
    }
    if (errno != EINVAL) {
        return false;
    }
    std::array<char, 65536> buffer;
    for (;;) {
        const auto count = read(input, buffer.data(), buffer.size());
        if (count == 0) {
            return true;
        }
        if (count < 0 ? errno != EINTR
                      : !writeAll(output, {buffer.data(), static_cast<std::size_t>(count)})) {
            return false;
        }
    }
}

bool pump(int input, int output, HeaderChange change)
{
    return writeAll(output, change(readHeader(input))) && copyRest(input, output);
}

void makeStandard(int descriptor, int standard)
{
    dup2(descriptor, standard);
    close(descriptor);
}

// Puts a pump of its own process behind `stream` (standard input or output) of this process, which then goes
// on as somebody else: the exit status that counts is the tool's.
bool insertPump(int stream, HeaderChange change)
{
    int ends[2];
    if (pipe(ends) != 0) {
        return false;
    }
    const bool incoming = stream == STDIN_FILENO;
    const auto child = fork();
    if (child < 0) {
        return false;
    }
    if (child == 0) {
        makeStandard(incoming ? ends[1] : ends[0], incoming ? STDOUT_FILENO : STDIN_FILENO);
        close(incoming ? ends[0] : ends[1]);
        _exit(pump(STDIN_FILENO, STDOUT_FILENO, change) ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    makeStandard(incoming ? ends[0] : ends[1], stream);
    close(incoming ? ends[1] : ends[0]);
    return true;
}

/// What a file that begins so is decoded as; null where it needs no decoder.
const char *formatOf(std::string_view start)
{
    struct Magic
    {
        std::string_view bytes;
        const char *format;
    };
    static constexpr std::array magics{Magic{"fLaC", "flac"}, Magic{"FORM", "aiff"}, Magic{"wvpk", "wv"},
                                       Magic{"ajkg", "shn"},  Magic{"MAC ", "ape"},  Magic{"TTA1", "tta"}};
    const auto *magic = std::find_if(magics.begin(), magics.end(),
                                     [start](const Magic &each) { return start.starts_with(each.bytes); });
    return magic == magics.end() ? nullptr : magic->format;
}

int runTool(const ToolFinder &finder, const Arguments &call)
{
    const auto program = finder.find(call.front());
    if (program.empty()) {
        complain(programName, ToolFinder::missingText(call.front()));
        constexpr int notFound = 127;
        return notFound;
    }
    return execute({program, call.front(), Arguments(call.begin() + 1, call.end()), {}, {}});
}

int decode(const std::string &format, const std::string &given, const ToolFinder &finder)
{
    const auto file = behindStandIn(given);
    const bool isWav = format == "flac" && file != given;
    const auto call = decoderCall(format, file, format == "wv" && wavPackMadeFromOther(file), isWav);
    if (call.empty()) {
        const File source(open(file.c_str(), O_RDONLY | O_CLOEXEC));
        return source && pump(source.descriptor(), STDOUT_FILENO, plainHeader) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    // flac and sox write the plain header themselves when told to.
    const bool plainAlready = format == "flac" || format == "aiff";
    if (!plainAlready && !insertPump(STDOUT_FILENO, plainHeader)) {
        return EXIT_FAILURE;
    }
    return runTool(finder, call);
}

int store(const std::string &file)
{
    constexpr mode_t usual = 0666;
    File target(open(file.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, usual));
    return target && pump(STDIN_FILENO, target.descriptor(), extensibleHeader) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

Arguments decoderCall(const std::string &format, const std::string &file, bool madeFromOther, bool isWav)
{
    const auto name = unmistakableName(file);
    if (isWav) {
        return {};
    }
    if (format == "flac") {
        return {"flac", "--force-legacy-wave-format", "-s", "-d", "-c", name};
    }
    if (format == "aiff") {
        // Without --no-glob a name such as "Live [1].aiff" stands for another file.
        return {"sox", "--no-glob", "-t", "aiff", name, "-t", "wavpcm", "-"};
    }
    if (format == "wv") {
        return madeFromOther ? Arguments{"wvunpack", "--wav", "-q", "-y", name, "-o", "-"}
                             : Arguments{"wvunpack", "-q", "-y", name, "-o", "-"};
    }
    if (format == "shn") {
        return {"shorten", "-x", name, "-"};
    }
    if (format == "ape") {
        return {"mac", name, "-", "-d"};
    }
    return {"ttaenc", "-d", "-o", "-", name};
}

std::string missingDecoder(const Arguments &files, const ToolFinder &finder)
{
    constexpr std::size_t longestMagic = 4;
    for (const auto &file : files) {
        const char *format = formatOf(readStart(file, longestMagic));
        const auto call = format ? decoderCall(format, file, false, false) : Arguments();
        if (!call.empty() && finder.find(call.front()).empty()) {
            return call.front();
        }
    }
    return {};
}

std::string decodedStart(const std::string &file, const ToolFinder &finder)
{
    constexpr std::size_t enough = 65536;
    auto start = readStart(file, enough);
    const char *format = formatOf(start);
    if (!format) {
        return start;
    }
    int ends[2];
    const auto child = pipe2(ends, O_CLOEXEC) == 0 ? fork() : -1;
    if (child < 0) {
        return {};
    }
    if (child == 0) {
        dieWithParent();
        // A pump that kept it would wait for room in a pipe that it alone could empty.
        close(ends[0]);
        dup2(ends[1], STDOUT_FILENO);
        dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
        _exit(decode(format, file, finder));
    }
    File output(ends[0]);
    close(ends[1]);
    start = readHeader(output.descriptor());
    output.close(); // a decoder that waits for room in the pipe gets to its end
    kill(child, SIGKILL);
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return start;
}

int runPcmPipe(const Arguments &arguments, const ToolFinder &finder)
{
    dieWithParent();
    if (arguments.size() == 3 && arguments[0] == "decode") {
        return decode(arguments[1], arguments[2], finder);
    }
    if (arguments.size() >= 2 && arguments[0] == "encode") {
        return insertPump(STDIN_FILENO, extensibleHeader)
                   ? runTool(finder, Arguments(arguments.begin() + 1, arguments.end()))
                   : EXIT_FAILURE;
    }
    if (arguments.size() == 2 && arguments[0] == "store") {
        return store(arguments[1]);
    }
    if (arguments.size() == 2 && arguments[0] == "store-aiff") {
        return storeAiff(readHeader(STDIN_FILENO), STDIN_FILENO, arguments[1]) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    complain(programName,
             "this program stands in the resources folder under the names of the tools it adapts");
    return 2;
}

} // namespace kruv::adapters
