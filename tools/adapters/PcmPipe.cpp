// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "PcmPipe.h"

#include "AiffStore.h"
#include "ChildProcess.h"
#include "Decoding.h"
#include "File.h"
#include "Pump.h"
#include "WavHeader.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

using HeaderChange = std::string (*)(std::string);

bool pump(int input, int output, HeaderChange change)
{
    return writeAll(output, change(readHeader(input))) && passOn(input, output).isWhole;
}

void makeStandard(int descriptor, int standard)
{
    dup2(descriptor, standard);
    close(descriptor);
}

// Puts a pump of its own process in front of standard input of this process, which then goes on as somebody
// else: the exit status that counts is the tool's.
bool insertPump(HeaderChange change)
{
    int ends[2];
    if (pipe(ends) != 0) {
        return false;
    }
    const auto child = fork();
    if (child < 0) {
        return false;
    }
    if (child == 0) {
        makeStandard(ends[1], STDOUT_FILENO);
        close(ends[0]);
        _exit(pump(STDIN_FILENO, STDOUT_FILENO, change) ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    makeStandard(ends[0], STDIN_FILENO);
    close(ends[1]);
    return true;
}

int runTool(const ToolFinder &finder, const Arguments &call)
{
    const auto program = finder.find(call.front());
    if (program.empty()) {
        complain(programName, ToolFinder::missingText(call.front()));
        return programNotFound;
    }
    return execute({program, call.front(), Arguments(call.begin() + 1, call.end()), {}, {}});
}

int store(const std::string &file)
{
    constexpr mode_t usual = 0666;
    File target(open(file.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, usual));
    return target && pump(STDIN_FILENO, target.descriptor(), extensibleHeader) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int runPcmPipe(const Arguments &arguments, const ToolFinder &finder)
{
    dieWithParent();
    if (arguments.size() == 3 && arguments[0] == "decode") {
        return decode(arguments[1], arguments[2], finder);
    }
    if (arguments.size() >= 2 && arguments[0] == "encode") {
        return insertPump(extensibleHeader)
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
