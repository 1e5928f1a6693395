// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShntoolRun.h"

#include "ChildProcess.h"
#include "Decoding.h"
#include "File.h"
#include "ScratchFolder.h"
#include "ShntoolAdapter.h"
#include "SoundReport.h"
#include "SplitPoints.h"
#include "WavHeader.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <set>
#include <sys/resource.h>

namespace kruv::adapters {

namespace {

using Names = std::set<std::string>;

Names namesIn(const std::string &folder)
{
    Names names;
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(folder.c_str()), closedir);
    while (const dirent *entry = entries ? readdir(entries.get()) : nullptr) {
        if (std::string_view name = entry->d_name; name != "." && name != "..") {
            names.emplace(name);
        }
    }
    return names;
}

/// The steps around one run of shntool.
class ShntoolRun
{
public:
    ShntoolRun(std::string name, ShntoolPlan plan, ChildCommand command)
        : m_name(std::move(name))
        , m_plan(std::move(plan))
        , m_command(std::move(command))
    {
    }

    // Empty on success; otherwise what went wrong before the tool could start.
    std::string prepare(const ToolFinder &finder)
    {
        const bool ready = (m_plan.standIns.empty() || writeStandIns()) &&
                           (m_plan.folderArgument == 0 || makeStage()) &&
                           (m_plan.pointsArgument == 0 || adaptSplitPoints(finder));
        return ready ? std::string() : strerror(errno);
    }

    std::unique_ptr<ChildProcess> run()
    {
        auto child = std::make_unique<ChildProcess>(std::move(m_command));
        child->run();
        return child;
    }

    // Whether every source was decoded to its end without a complaint; says it of each that was not.
    bool sourcesAreSound(const ToolFinder &finder, bool toolSucceeded)
    {
        m_report.read();
        bool areSound = true;
        for (const auto &source : m_plan.heardSources) {
            // Some ways to read a file end before its end.
            const bool isUnknown = toolSucceeded && !m_report.knows(source) && isDecoded(source);
            if (isUnknown && !decodesWell(source, finder)) {
                m_report.read();
            }
            if (const auto complaint = m_report.complaint(source); !complaint.empty()) {
                complain("shntool [" + m_plan.arguments.front() + "]",
                         "error: [" + source + "] " + complaint);
                areSound = false;
            }
        }
        return areSound;
    }

    // Moves the outputs to their places; false when one could not be moved.
    bool publish()
    {
        if (!m_stage) {
            return true;
        }
        auto written = namesIn(m_stage->path());
        std::erase_if(written, [this](const std::string &name) { return m_reserved.count(name) != 0; });
        if (!m_plan.exactFile.empty()) {
            return publishExactly(written);
        }
        bool complete = true;
        for (const auto &output : m_plan.outputs) {
            for (const auto &name : output.possibleNames) {
                if (written.erase(name) != 0) {
                    complete = move(name, m_plan.folder + "/" + output.wantedName) && complete;
                    break;
                }
            }
        }
        for (const auto &name : written) {
            complete = move(name, m_plan.folder + "/" + name) && complete;
        }
        return complete;
    }

private:
    bool writeStandIns()
    {
        m_standIns.emplace(ScratchFolder::temporaryParent());
        if (!*m_standIns) {
            return false;
        }
        // The source's own path follows the folder's, so that taking the folder's out of the messages leaves
        // the name as it was given.
        const auto full = m_standIns->path() + "/full";
        const auto bare = m_standIns->path() + "/bare/";
        for (const auto &standIn : m_plan.standIns) {
            const bool isFull = standIn.source.front() == '/';
            const auto path = (isFull ? full : bare) + withoutParents(standIn.source);
            const bool written =
                makeFoldersAbove(path) &&
                (standIn.headerOnly ? writeHeaderStandIn(path, standIn.source)
                                    : writeStreamStandIn(path, standIn.source, standIn.kind));
            if (!written) {
                return false;
            }
            m_command.arguments[standIn.argument] = path;
        }
        m_command.replacements.push_back({full, ""});
        m_command.replacements.push_back({bare, ""});
        return true;
    }

    // ".." would lead out of the private folder.
    static std::string withoutParents(std::string path)
    {
        for (auto at = path.find("../"); at != std::string::npos; at = path.find("../", at)) {
            if (at == 0 || path[at - 1] == '/') {
                path.replace(at, 2, "--");
            }
            at += 3;
        }
        return path;
    }

    bool makeStage()
    {
        m_stage.emplace(m_plan.folder);
        if (!*m_stage) {
            return false;
        }
        m_command.arguments[m_plan.folderArgument] = m_stage->path();
        nameOutputsInMessages();
        if (!m_plan.replace) {
            reserveTakenNames();
        }
        return true;
    }

    bool adaptSplitPoints(const ToolFinder &finder)
    {
        constexpr std::size_t sizeLimit = 1 << 20;
        const auto header = WavHeader::parse(decodedStart(m_plan.sources.front(), finder));
        const PcmLayout layout = header ? PcmLayout{header->rate, header->frameSize} : PcmLayout();
        auto &file = m_command.arguments[m_plan.pointsArgument];
        const auto given = readStart(file, sizeLimit);
        const auto plain = plainSplitPoints(given);
        const auto points =
            layout.rate == 0 || layout.isCdLike() ? std::nullopt : splitPointsInBytes(plain, layout);
        if (!points && plain == given) {
            return true;
        }
        constexpr mode_t ownerOnly = 0600;
        m_points.emplace(ScratchFolder::temporaryParent());
        file = m_points->path() + "/points";
        const File target(open(file.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, ownerOnly));
        return target && writeAll(target.descriptor(), points.value_or(plain));
    }

    // The messages are to show the names that the outputs will have.
    void nameOutputsInMessages()
    {
        const auto stage = m_stage->path().substr(m_stage->path().rfind('/'));
        m_command.replacements.push_back({stage, ""});
        for (const auto &output : m_plan.outputs) {
            const std::string shown(
                baseName(m_plan.exactFile.empty() ? output.wantedName : m_plan.exactFile));
            for (const auto &name : output.possibleNames) {
                if (name != shown) {
                    m_command.replacements.push_back(
                        {std::string(stage).append("/").append(name), std::string("/").append(shown)});
                }
            }
        }
    }

    // Empty files under the names that are taken make the tool refuse them right away, in its own words.
    void reserveTakenNames()
    {
        for (const auto &output : m_plan.outputs) {
            const auto place =
                m_plan.exactFile.empty() ? m_plan.folder + "/" + output.wantedName : m_plan.exactFile;
            if (fileExists(place)) {
                reserve(output.possibleNames[0]);
                reserve(output.possibleNames[1]);
            }
        }
        if (m_plan.takenSuffix.empty()) {
            return;
        }
        for (const auto &name : namesIn(m_plan.folder)) {
            if (name.starts_with(m_plan.takenPrefix) && name.ends_with(m_plan.takenSuffix)) {
                reserve(name);
            }
        }
    }

    void reserve(const std::string &name)
    {
        constexpr mode_t ownerOnly = 0600;
        const File file(
            open((m_stage->path() + "/" + name).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, ownerOnly));
        m_reserved.insert(name);
    }

    bool publishExactly(const Names &written)
    {
        return written.empty() || move(*written.begin(), m_plan.exactFile);
    }

    bool move(const std::string &name, const std::string &place)
    {
        if (moveIntoPlace(m_stage->path() + "/" + name, place, m_plan.replace)) {
            return true;
        }
        complain(baseName(m_name), "error: could not write output file: [" + place + "]: " + strerror(errno));
        return false;
    }

    std::string m_name;
    ShntoolPlan m_plan;
    ChildCommand m_command;
    SoundReport m_report;
    std::optional<ScratchFolder> m_standIns;
    std::optional<ScratchFolder> m_points;
    std::optional<ScratchFolder> m_stage;
    Names m_reserved;
};

// A blank in our own path would fall apart in shntool's decoder lines; then PATH has to find us.
std::string helperCall(const ToolFinder &finder)
{
    auto path = finder.ownFolder() + "/" + std::string(programName);
    return path.find_first_of(" \t\n") == std::string::npos ? path : std::string(programName);
}

// shntool itself would say of a missing encoder that it ended, and of a decoder that the source can't be
// read.
std::string missingTool(const ShntoolPlan &plan, const ToolFinder &finder)
{
    const bool byName = !plan.encoder.empty() && plan.encoder.find('/') == std::string::npos;
    return byName && finder.find(plan.encoder).empty() ? plan.encoder : missingDecoder(plan.sources, finder);
}

// Before each decoder shntool closes every number that a file could have, one by one: a login's usual limit
// is all it needs, and a service's, a million, takes longer than the decoding.
void limitOpenFiles()
{
    constexpr rlim_t usual = 1024;
    rlimit files{};
    if (getrlimit(RLIMIT_NOFILE, &files) == 0 && files.rlim_cur > usual) {
        files.rlim_cur = usual;
        setrlimit(RLIMIT_NOFILE, &files);
    }
}

} // namespace

int runShntool(const std::string &name, const Arguments &arguments, const ToolFinder &finder)
{
    auto plan = planShntool(arguments, {fileExists, sourceKind, helperCall(finder)});
    if (!plan.error.empty()) {
        complain(baseName(name), "error: " + plan.error);
        return EXIT_FAILURE;
    }
    if (const auto missing = missingTool(plan, finder); !missing.empty()) {
        complain(baseName(name), "error: " + ToolFinder::missingText(missing));
        return EXIT_FAILURE;
    }
    ChildCommand command{finder.find("shntool"), name, plan.arguments, {}, {}};
    command.failureWords = "]: warning: child encoder process "; // the tool goes on without that output
    setenv("PATH", finder.childSearchPath().c_str(), 1);
    limitOpenFiles();
    // Without a place for its outputs the tool can only fail; it says so itself.
    if (plan.runsAlone() || (plan.folderArgument != 0 && !isFolder(plan.folder))) {
        return execute(command);
    }
    catchSignals();
    const bool oneResult = plan.oneResult;
    std::unique_ptr<ChildProcess> child;
    bool isWhole = true;
    {
        ShntoolRun steps(name, std::move(plan), std::move(command));
        if (const auto problem = steps.prepare(finder); !problem.empty()) {
            complain(baseName(name), "error: could not prepare the run: " + problem);
            return EXIT_FAILURE;
        }
        child = steps.run();
        if (child->endedByItself()) {
            isWhole = steps.sourcesAreSound(finder, child->exitStatus() == 0);
        }
        if (isWhole && child->endedByItself() && (child->exitStatus() == 0 || !oneResult)) {
            isWhole = steps.publish();
        }
    }
    if (isWhole) {
        child->endLikewise();
    }
    return EXIT_FAILURE;
}

} // namespace kruv::adapters
