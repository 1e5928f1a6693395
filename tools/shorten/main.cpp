// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/InputStream.h"
#include "common/OutputFile.h"
#include "common/ToolError.h"
#include "common/ToolMain.h"
#include "shorten/Decoder.h"
#include "shorten/WavEncoder.h"

#include <cstdio>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using kruv::tools::InputStream;
using kruv::tools::OutputFile;
using kruv::tools::ToolError;

constexpr const char *usage = R"(Usage: shorten [-x] [INPUT [OUTPUT]]

Compresses a WAV file of 8 or 16 bit losslessly, or extracts one (-x).
"-" or no name stands for standard input and standard output. With INPUT
alone the output is named INPUT.shn, or with -x INPUT without ".shn".

  -x          extract
  -h, --help  show this text
  -v, --version
  --          what follows is a name, even when it begins with a dash
)";

struct Request
{
    bool extract = false;
    std::string input = "-";
    std::string output = "-";
};

std::string nameFor(const std::string &input, bool extract)
{
    const std::string suffix = ".shn";
    if (input == "-") {
        return input;
    }
    if (!extract) {
        return input + suffix;
    }
    if (!input.ends_with(suffix) || input.size() == suffix.size()) {
        throw ToolError("cannot derive an output name from " + input + ", which does not end in .shn");
    }
    return input.substr(0, input.size() - suffix.size());
}

Request parse(const std::vector<std::string> &arguments)
{
    Request request;
    std::vector<std::string> names;
    bool optionsEnded = false;
    for (const std::string &argument : arguments) {
        if (optionsEnded || argument == "-" || !argument.starts_with('-')) {
            names.push_back(argument);
        } else if (argument == "--") {
            optionsEnded = true;
        } else if (argument == "-x") {
            request.extract = true;
        } else {
            throw ToolError("unknown option " + argument + " (shorten --help lists them)");
        }
    }
    if (names.size() > 2) {
        throw ToolError("more than two file names");
    }
    if (!names.empty()) {
        request.input = names[0];
        request.output = names.size() == 2 ? names[1] : nameFor(names[0], request.extract);
    }
    return request;
}

int run(const std::vector<std::string> &arguments)
{
    for (const std::string &argument : arguments) {
        if (argument == "--") {
            break;
        }
        if (argument == "-h" || argument == "--help") {
            return std::fputs(usage, stdout) < 0;
        }
        if (argument == "-v" || argument == "--version") {
            return std::puts("shorten (Kruv) " KRUV_VERSION) < 0;
        }
    }
    const Request request = parse(arguments);
    if (request.output == "-" && ::isatty(STDOUT_FILENO)) {
        throw ToolError("not writing audio to a terminal (shorten --help shows the usage)");
    }
    InputStream input(request.input);
    if (input.isFile(request.output)) {
        throw ToolError("input and output are the same file");
    }
    OutputFile output(request.output);
    std::string warning;
    if (request.extract) {
        kruv::shorten::Decoder(input, output).run();
    } else {
        warning = kruv::shorten::encodeWav(input, output);
    }
    output.commit();
    if (!warning.empty()) {
        std::fprintf(stderr, "shorten: warning: %s\n", warning.c_str());
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    return kruv::tools::toolMain("shorten",
                                 [=] { return run(std::vector<std::string>(argv + 1, argv + argc)); });
}
