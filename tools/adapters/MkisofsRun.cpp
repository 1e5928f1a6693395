// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "MkisofsRun.h"

#include "ChildProcess.h"
#include "DvdImage.h"
#include "File.h"
#include "MkisofsAdapter.h"
#include "ScratchFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <unistd.h>

namespace kruv::adapters {

namespace {

constexpr int usageError = 2;

std::vector<std::string> namesIn(const std::string &folder)
{
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(folder.c_str()), closedir);
    while (const dirent *entry = entries ? readdir(entries.get()) : nullptr) {
        names.emplace_back(entry->d_name);
    }
    return names;
}

// The tool runs in another folder, so what it is told must not depend on ours.
std::string absolute(const std::string &path)
{
    if (path.empty() || path.front() == '/') {
        return path;
    }
    const std::unique_ptr<char, decltype(&free)> here(getcwd(nullptr, 0), free);
    return std::string(here ? here.get() : ".") + "/" + path;
}

std::string publishImage(const std::string &written, const std::string &image)
{
    {
        const File file(open(written.c_str(), O_RDWR | O_CLOEXEC));
        auto problem =
            file ? DvdImage(file.descriptor()).complete() : std::string("the image was not written");
        if (!problem.empty()) {
            return problem;
        }
    }
    return moveIntoPlace(written, image, true) ? std::string() : image + ": " + strerror(errno);
}

bool writeSortFile(const std::string &path, const std::string &tree)
{
    constexpr mode_t ownerOnly = 0600;
    const File file(open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, ownerOnly));
    return file && writeAll(file.descriptor(), sortFileText(dvdAudioOrder(namesIn(tree + "/AUDIO_TS"))));
}

} // namespace

int runMkisofs(const std::string &name, const Arguments &arguments, const ToolFinder &finder)
{
    auto plan = planMkisofs(
        arguments, [](const std::string &folder) { return fileExists(folder + "/AUDIO_TS/AUDIO_TS.IFO"); });
    if (!plan.error.empty()) {
        complain(baseName(name), plan.error);
        return usageError;
    }
    ChildCommand command{finder.find("mkisofs"), name, plan.arguments, plan.tree, {}};
    if (!plan.dvdAudio) {
        return execute(command);
    }
    catchSignals();
    std::optional<ChildProcess> child;
    std::string problem;
    {
        const ScratchFolder scratch(ScratchFolder::temporaryParent());
        const auto sortFile = absolute(scratch.path()) + "/order";
        const auto image = absolute(plan.image);
        std::optional<ScratchFolder> beside;
        if (!scratch || !writeSortFile(sortFile, plan.tree)) {
            problem = std::string("can't write a temporary file: ") + strerror(errno);
        }
        command.arguments[plan.sortFileArgument] = sortFile;
        if (problem.empty() && plan.imageArgument != 0) {
            beside.emplace(folderOf(image));
            if (!*beside) {
                problem = plan.image + ": " + strerror(errno);
            }
            command.arguments[plan.imageArgument] = beside->path() + "/image";
        }
        if (problem.empty()) {
            child.emplace(std::move(command));
            child->run();
            if (beside && child->endedByItself() && child->exitStatus() == 0) {
                problem = publishImage(beside->path() + "/image", image);
            }
        }
    }
    if (!problem.empty()) {
        complain(baseName(name), problem);
        return EXIT_FAILURE;
    }
    child->endLikewise();
}

} // namespace kruv::adapters
