// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine.h"
#include "Compress.h"
#include "Decompress.h"
#include "MacError.h"
#include "TimedProgress.h"
#include "common/ToolMain.h"

#include <exception>
#include <new>
#include <string>
#include <vector>

using namespace kruv::mac;

namespace {

constexpr int usageStatus = 255;

int report(ErrorNumber number, const std::string &text)
{
    const int value = static_cast<int>(number);
    printMessage("\nmac: " + text + "\nError: " + std::to_string(value) + "\n");
    // What the shell would make of the number; none of them is a multiple of 256.
    return value & 0xFF;
}

void run(const CommandLine &command)
{
    TimedProgress progress;
    switch (command.mode) {
    case CommandLine::Mode::Compress:
        printMessage(std::string("Compressing (") + command.level->name + ")...\n");
        compress(command.input, command.output, *command.level, progress);
        break;
    case CommandLine::Mode::Decompress:
        printMessage("Decompressing...\n");
        decompress(command.input, command.output, progress);
        break;
    case CommandLine::Mode::Verify:
        printMessage("Verifying...\n");
        verify(command.input, progress);
        break;
    }
    progress.finish();
    printMessage("\nSuccess...\n");
}

} // namespace

int main(int argc, char **argv)
{
    kruv::tools::prepareProcess();
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto command = CommandLine::parse(arguments);
    if (!command) {
        printMessage("Monkey's Audio coder of Kruv " KRUV_VERSION "\n" + CommandLine::usage());
        return usageStatus;
    }
    try {
        run(*command);
        return 0;
    } catch (const MacError &error) {
        return report(error.number(), error.what());
    } catch (const std::bad_alloc &) {
        return report(ErrorNumber::Memory, "not enough memory");
    } catch (const std::exception &error) {
        return report(ErrorNumber::Undefined, error.what());
    }
}
