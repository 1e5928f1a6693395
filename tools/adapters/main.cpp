// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Cdda2wavAdapter.h"
#include "ChildProcess.h"
#include "File.h"
#include "FlacAdapter.h"
#include "MkisofsRun.h"
#include "PcmPipe.h"
#include "ShntoolRun.h"
#include "ToolFinder.h"
#include "Watch.h"
#include "WvunpackAdapter.h"

#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace kruv::adapters;

std::string ownFolder()
{
    std::string path(PATH_MAX, '\0');
    const auto size = readlink("/proc/self/exe", path.data(), path.size());
    path.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return folderOf(path);
}

// With descriptor 0 free, a tool would take the first file it opens for its standard input.
void keepStandardInput()
{
    if (fcntl(STDIN_FILENO, F_GETFD) < 0) {
        open("/dev/null", O_RDONLY);
    }
}

Arguments adaptedArguments(std::string_view tool, Arguments arguments)
{
    if (tool == "flac") {
        return flacArguments(std::move(arguments), fileExists);
    }
    if (tool == "wvunpack") {
        return wvunpackArguments(std::move(arguments), fileExists, wavPackMadeFromOther);
    }
    return arguments;
}

int run(const std::string &name, const Arguments &arguments)
{
    const auto tool = baseName(name);
    const char *searchPath = getenv("PATH");
    const ToolFinder finder(searchPath ? searchPath : "", ownFolder());
    if (tool == programName && arguments == Arguments{"watch"}) {
        return watchTools();
    }
    if (tool == programName) {
        return runPcmPipe(arguments, finder);
    }
    const auto program = finder.find(tool);
    if (program.empty()) {
        complain(tool, ToolFinder::missingText(tool));
        return programNotFound;
    }
    if (tool == "shntool") {
        return runShntool(name, arguments, finder);
    }
    if (tool == "mkisofs") {
        return runMkisofs(name, arguments, finder);
    }
    if (tool == "cdda2wav") {
        const auto plan = planCdda2wav(arguments, opticalDrives());
        if (!plan.error.empty()) {
            complain(tool, plan.error);
            return EXIT_FAILURE;
        }
        // The tool is two processes: a guard stays that ends both.
        catchSignals();
        ChildProcess child({program, name, plan.arguments, {}, {}});
        child.run();
        child.endLikewise();
    }
    return execute({program, name, adaptedArguments(tool, arguments), {}, {}});
}

} // namespace

int main(int argc, char **argv)
{
    keepStandardInput();
    if (argc < 1) {
        return programNotFound;
    }
    return run(argv[0], Arguments(argv + 1, argv + argc));
}
