// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ByteSink.h"
#include "common/InputStream.h"
#include "common/OutputFile.h"
#include "common/ProgressPrinter.h"
#include "common/ToolError.h"
#include "common/ToolMain.h"
#include "common/WavReader.h"
#include "ttaenc/Decoder.h"
#include "ttaenc/Encoder.h"
#include "ttaenc/SkipTags.h"

#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using kruv::tools::InputStream;
using kruv::tools::OutputFile;
using kruv::tools::ProgressPrinter;
using kruv::tools::ToolError;
using kruv::tools::WavReader;

constexpr const char *usage = R"(Usage: ttaenc [-e | -d | -t] FILE [-o OUTPUT]

Compresses a WAV file (RIFF, RF64, BW64 or Wave64) of 8 to 24 bit losslessly
to TTA, or extracts one.
Without -e, -d or -t the content of FILE decides. "-" stands for standard
input or output. Without -o the output is FILE with its extension changed.

  -e             compress
  -d             extract to WAV; damaged frames become silence
  -t             test: check every checksum and decode everything
  -o OUTPUT      name of the output; an existing file is replaced
  -h, --help     show this text
  -v, --version
  --             what follows is a name, even when it begins with a dash
)";

enum class Mode { ByContent, Encode, Decode, Test, Help, Version };

struct Request
{
    Mode mode = Mode::ByContent;
    std::optional<std::string> input;
    std::optional<std::string> output;
};

std::optional<Mode> modeFor(const std::string &option)
{
    struct Row
    {
        const char *option;
        Mode mode;
    };
    constexpr Row rows[] = {{"-e", Mode::Encode},        {"-d", Mode::Decode},   {"-t", Mode::Test},
                            {"-h", Mode::Help},          {"--help", Mode::Help}, {"-v", Mode::Version},
                            {"--version", Mode::Version}};
    for (const Row &row : rows) {
        if (option == row.option) {
            return row.mode;
        }
    }
    return std::nullopt;
}

Request parse(const std::vector<std::string> &arguments)
{
    Request request;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string &argument = arguments[i];
        if (!optionsEnded && argument == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && argument == "-o") {
            if (++i == arguments.size()) {
                throw ToolError("-o needs a file name");
            }
            request.output = arguments[i];
        } else if (optionsEnded || argument == "-" || !argument.starts_with('-')) {
            if (request.input) {
                throw ToolError("more than one input file");
            }
            request.input = argument;
        } else if (const auto mode = modeFor(argument)) {
            if (request.mode != Mode::ByContent && request.mode != *mode) {
                throw ToolError("only one of -e, -d and -t can be given");
            }
            request.mode = *mode;
        } else {
            throw ToolError("unknown option " + argument + " (ttaenc --help lists them)");
        }
    }
    return request;
}

Mode modeByContent(InputStream &input)
{
    const auto start = input.peek(4);
    if (start.size() >= 4 && std::memcmp(start.data(), "TTA1", 4) == 0) {
        return Mode::Decode;
    }
    if (WavReader::isWav(input)) {
        return Mode::Encode;
    }
    throw ToolError(input.name() + " is neither a WAV nor a TTA file");
}

std::string outputBeside(const std::string &input, Mode mode)
{
    if (input == "-") {
        return input;
    }
    const auto slash = input.rfind('/');
    const auto nameStart = slash == std::string::npos ? 0 : slash + 1;
    const auto dot = input.rfind('.');
    const bool hasExtension = dot != std::string::npos && dot > nameStart;
    return input.substr(0, hasExtension ? dot : input.size()) + (mode == Mode::Encode ? ".tta" : ".wav");
}

int report(const InputStream &input, const std::vector<std::string> &problems)
{
    for (const std::string &problem : problems) {
        std::fprintf(stderr, "ttaenc: %s: %s\n", input.name().c_str(), problem.c_str());
    }
    return problems.empty() ? 0 : 1;
}

class NullSink : public kruv::tools::ByteSink
{
public:
    void write(std::span<const std::uint8_t>) override {}
};

int test(InputStream &input)
{
    ProgressPrinter progress({"", "% done\r"});
    kruv::ttaenc::Decoder decoder(input);
    NullSink nowhere;
    try {
        decoder.run(nowhere, [&](std::uint64_t done, std::uint64_t total) { progress.update(done, total); });
    } catch (const ToolError &) {
        // The end came too early; where it should have been is among the problems already, for files.
        std::fputc('\n', stderr);
        report(input, decoder.problems());
        throw;
    }
    progress.finish();
    return report(input, decoder.problems());
}

int decode(InputStream &input, OutputFile &output, ProgressPrinter &progress)
{
    kruv::ttaenc::Decoder decoder(input);
    decoder.run(output, [&](std::uint64_t done, std::uint64_t total) { progress.update(done, total); });
    output.commit();
    progress.finish();
    return report(input, decoder.problems());
}

int encode(InputStream &input, OutputFile &output, ProgressPrinter &progress)
{
    const std::string warning = kruv::ttaenc::encode(
        input, output, [&](std::uint64_t done, std::uint64_t total) { progress.update(done, total); });
    output.commit();
    progress.finish();
    if (!warning.empty()) {
        std::fprintf(stderr, "ttaenc: warning: %s\n", warning.c_str());
    }
    return 0;
}

int run(const std::vector<std::string> &arguments)
{
    Request request = parse(arguments);
    if (request.mode == Mode::Help) {
        return std::fputs(usage, stdout) < 0;
    }
    if (request.mode == Mode::Version) {
        return std::puts("ttaenc (Kruv) " KRUV_VERSION) < 0;
    }
    if (!request.input) {
        throw ToolError("no input file (ttaenc --help shows the usage)");
    }

    InputStream input(*request.input);
    kruv::ttaenc::skipId3v2(input);
    if (request.mode == Mode::Test) {
        return test(input);
    }
    if (request.mode == Mode::ByContent) {
        request.mode = modeByContent(input);
    }
    const std::string outputName = request.output.value_or(outputBeside(*request.input, request.mode));
    if (outputName == "-" && ::isatty(STDOUT_FILENO)) {
        throw ToolError("not writing audio to a terminal (ttaenc --help shows the usage)");
    }
    if (input.isFile(outputName)) {
        throw ToolError("input and output are the same file");
    }

    OutputFile output(outputName);
    ProgressPrinter progress({"Percent Progress: ", "\r"});
    return request.mode == Mode::Encode ? encode(input, output, progress) : decode(input, output, progress);
}

} // namespace

int main(int argc, char **argv)
{
    return kruv::tools::toolMain("ttaenc",
                                 [=] { return run(std::vector<std::string>(argv + 1, argv + argc)); });
}
