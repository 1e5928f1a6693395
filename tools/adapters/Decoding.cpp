// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Decoding.h"

#include "ChildProcess.h"
#include "File.h"
#include "Pump.h"
#include "SoundReport.h"
#include "StandIn.h"
#include "WavHeader.h"
#include "WvunpackAdapter.h"
#include "common/InputStream.h"
#include "common/PcmReader.h"
#include "common/ToolError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

constexpr int endedBySignal = 1000; // and its number; no exit status is as great

int runTool(const ToolFinder &finder, const Arguments &call)
{
    const auto program = finder.find(call.front());
    return program.empty()
               ? programNotFound
               : execute({program, call.front(), Arguments(call.begin() + 1, call.end()), {}, {}});
}

/// A decoder as a child, whose output is read here.
class Decoder
{
public:
    Decoder(const ToolFinder &finder, Arguments call)
        : m_call(std::move(call))
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) {
            return;
        }
        m_output = File(ends[0]);
        const File input(ends[1]);
        m_child = fork();
        if (m_child == 0) {
            dieWithParent();
            signal(SIGPIPE, SIG_DFL);
            dup2(input.descriptor(), STDOUT_FILENO);
            _exit(runTool(finder, m_call));
        }
        if (m_child > 0) {
            m_ending = File(static_cast<int>(syscall(SYS_pidfd_open, m_child, 0)));
        }
    }
    ~Decoder() { stop(); }
    Decoder(const Decoder &) = delete;
    Decoder &operator=(const Decoder &) = delete;

    /// To its own end: what it may leave behind counts for nothing.
    Inflow output() const { return {m_output.descriptor(), m_ending.descriptor()}; }

    /// Waits for its end; returns its exit status.
    int end()
    {
        m_output.close(); // one that waits for room in the pipe gets to its end
        int status = 0;
        while (m_child > 0 && waitpid(m_child, &status, 0) < 0 && errno == EINTR) {
        }
        const bool started = std::exchange(m_child, -1) > 0;
        return !started            ? EXIT_FAILURE
               : WIFEXITED(status) ? WEXITSTATUS(status)
                                   : endedBySignal + WTERMSIG(status);
    }

    void stop()
    {
        if (m_child > 0) {
            kill(m_child, SIGKILL);
            end();
        }
    }

    /// What such an end says of the source, a clause; empty where it is sound.
    std::string complaint(int status) const
    {
        const auto &tool = m_call.front();
        if (status == EXIT_SUCCESS) {
            return {};
        }
        if (status == programNotFound) {
            return "can't be decoded: " + ToolFinder::missingText(tool);
        }
        return status > endedBySignal ? "can't be decoded: " + tool + " was ended by signal " +
                                            std::to_string(status - endedBySignal)
                                      : "is damaged: " + tool + " could not decode all of it";
    }

private:
    const Arguments m_call;
    File m_output;
    File m_ending;
    pid_t m_child = -1;
};

/// How many bytes of audio a header without a length leads.
std::uint64_t countedAudio(const ToolFinder &finder, const Arguments &call)
{
    Decoder decoder(finder, call);
    const auto start = readHeader(decoder.output());
    const auto header = WavHeader::parse(start);
    const auto bytes = start.size() + drain(decoder.output());
    decoder.end();
    return header ? bytes - header->data : 0;
}

int decodeByTool(const std::string &file, const Arguments &call, const ToolFinder &finder)
{
    Decoder decoder(finder, call);
    auto start = plainHeader(readHeader(decoder.output()));
    if (const auto header = WavHeader::parse(start); header && !header->statesLength()) {
        start = withLength(std::move(start), countedAudio(finder, call));
    }
    const auto header = WavHeader::parse(start);
    const bool isTaken = writeAll(STDOUT_FILENO, start);
    auto passage = isTaken ? passOn(decoder.output(), STDOUT_FILENO) : Passage();
    if (isTaken && header && !passage.isWhole &&
        start.size() + passage.bytes >= header->data + header->dataSize) {
        drain(decoder.output()); // what follows the audio is wanted by nobody
        passage.isWhole = true;
    }
    if (!passage.isWhole) {
        decoder.stop();
        return EXIT_FAILURE;
    }
    const int status = decoder.end();
    SoundReport::note(file, decoder.complaint(status));
    return status;
}

tools::WavFormat plainFormat(const tools::PcmFormat &format)
{
    constexpr unsigned bitsInAByte = 8;
    tools::WavFormat plain;
    plain.sampleRate = format.sampleRate;
    plain.channels = static_cast<std::uint16_t>(format.channels);
    plain.bitsPerSample = static_cast<std::uint16_t>(format.bytesPerSample() * bitsInAByte);
    return plain;
}

/// False where nobody wants the rest.
bool writeSamples(tools::PcmReader &reader)
{
    constexpr std::size_t framesAtOnce = 8192;
    std::vector<std::uint8_t> buffer(framesAtOnce * reader.format().bytesPerFrame());
    while (const auto got = reader.read(buffer)) {
        if (reader.format().bytesPerSample() == 1) {
            std::for_each(buffer.begin(), buffer.end(), [](std::uint8_t &sample) { sample ^= 0x80; });
        }
        if (!writeAll(STDOUT_FILENO, {reinterpret_cast<const char *>(buffer.data()), got})) {
            return false;
        }
    }
    return true;
}

int passOnPcm(const std::string &file, tools::PcmReader &reader)
{
    const auto &format = reader.format();
    const auto header = plainFormat(format).header(reader.frames().value_or(0) * format.bytesPerFrame());
    std::string complaint;
    try {
        if (!writeAll(STDOUT_FILENO, {reinterpret_cast<const char *>(header.data()), header.size()}) ||
            !writeSamples(reader)) {
            return EXIT_FAILURE;
        }
        complaint = reader.endedEarly() ? "is damaged: it has less audio than its header states" : "";
    } catch (const tools::ToolError &failure) {
        complaint = std::string("can't be read: ") + failure.what();
    }
    SoundReport::note(file, complaint);
    return complaint.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Integer PCM, by ourselves. Nothing where it is none.
std::optional<int> decodePcm(const std::string &file)
{
    std::optional<tools::InputStream> input;
    std::optional<tools::PcmReader> reader;
    try {
        input.emplace(file);
        reader.emplace(*input);
    } catch (const tools::ToolError &) {
        return {};
    }
    return passOnPcm(file, *reader);
}

/// All of a WAV, with its further chunks.
int passOnWav(const std::string &file)
{
    const File source(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    const bool isPassed = source && writeAll(STDOUT_FILENO, plainHeader(readHeader(source.descriptor()))) &&
                          passOn(source.descriptor(), STDOUT_FILENO).isWhole;
    return isPassed ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Empty where nothing has to decode it.
std::string decodedFormat(const std::string &file)
{
    struct Magic
    {
        std::string_view bytes;
        const char *format;
    };
    static constexpr std::array magics{Magic{"fLaC", "flac"}, Magic{"FORM", "aiff"}, Magic{"wvpk", "wv"},
                                       Magic{"ajkg", "shn"},  Magic{"MAC ", "ape"},  Magic{"TTA1", "tta"}};
    constexpr std::size_t enough = 4;
    const auto start = readStart(file, enough);
    const auto magic = std::find_if(magics.begin(), magics.end(),
                                    [&start](const Magic &each) { return start == each.bytes; });
    return magic == magics.end() ? "" : magic->format;
}

/// A child that decodes `file` into `output`, its words into nothing.
pid_t startDecoding(const std::string &file, int output, const ToolFinder &finder)
{
    const auto format = decodedFormat(file);
    const pid_t child = fork();
    if (child == 0) {
        dieWithParent();
        dup2(output, STDOUT_FILENO);
        dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
        _exit(decode(format, file, finder));
    }
    return child;
}

int statusOf(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}

} // namespace

std::string withLength(std::string start, std::uint64_t audioBytes)
{
    constexpr std::uint64_t most = UINT32_MAX;
    const auto header = WavHeader::parse(start);
    if (!header || audioBytes == 0 || audioBytes + header->data > most) {
        return start;
    }
    const auto frames = audioBytes / std::max(header->frameSize, 1U);
    return header->withDataSize(std::move(start), static_cast<std::uint32_t>(frames * header->frameSize));
}

int decode(const std::string &format, const std::string &given, const ToolFinder &finder)
{
    const auto file = behindStandIn(given);
    const auto kind = sourceKind(file);
    // A reader that has enough closes the pipe.
    signal(SIGPIPE, SIG_IGN);
    if (format == "flac" && kind == SourceKind::ExtensibleWav) {
        return passOnWav(file);
    }
    if (format == "aiff" || kind == SourceKind::UnusualPcm) {
        if (const auto status = decodePcm(file)) {
            return *status;
        }
    }
    return decodeByTool(file, decoderCall(format, file, format == "wv" && wavPackMadeFromOther(file)),
                        finder);
}

Arguments decoderCall(const std::string &format, const std::string &file, bool madeFromOther)
{
    const auto name = unmistakableName(file);
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
    for (const auto &file : files) {
        const auto format = decodedFormat(file);
        // Nearly all AIFF is read in this process.
        const bool hasTool = !format.empty() && format != "aiff";
        const auto call = hasTool ? decoderCall(format, file, false) : Arguments();
        if (!call.empty() && finder.find(call.front()).empty()) {
            return call.front();
        }
    }
    return {};
}

std::string decodedStart(const std::string &file, const ToolFinder &finder)
{
    constexpr std::size_t enough = 65536;
    if (!isDecoded(file) && sourceKind(file) != SourceKind::UnusualPcm) {
        return readStart(file, enough);
    }
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return {};
    }
    File output(ends[0]);
    File input(ends[1]);
    const auto child = startDecoding(file, input.descriptor(), finder);
    input.close();
    auto start = child < 0 ? std::string() : readHeader(output.descriptor());
    output.close();
    if (child > 0) {
        kill(child, SIGKILL);
        statusOf(child);
    }
    return start;
}

bool isDecoded(const std::string &file)
{
    return !decodedFormat(file).empty();
}

bool decodesWell(const std::string &file, const ToolFinder &finder)
{
    const File nothing(open("/dev/null", O_WRONLY | O_CLOEXEC));
    const auto child = startDecoding(file, nothing.descriptor(), finder);
    return child > 0 && statusOf(child) == EXIT_SUCCESS;
}

} // namespace kruv::adapters
