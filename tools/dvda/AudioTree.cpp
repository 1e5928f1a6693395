// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioTree.h"

#include "InfoFiles.h"
#include "common/ToolError.h"

#include <algorithm>
#include <string_view>
#include <system_error>

namespace kruv::dvda {
namespace {

namespace fs = std::filesystem;
using tools::ToolError;

[[noreturn]] void fail(const std::string &action, const fs::path &path, const std::error_code &error)
{
    throw ToolError("cannot " + action + " " + path.string() + ": " + error.message());
}

/// Files that an earlier run may have left.
bool isOurs(const fs::directory_entry &entry)
{
    constexpr std::string_view infoFiles[] = {"AUDIO_PP.IFO", "AUDIO_TS.IFO", "AUDIO_TS.BUP", "ATS_01_0.IFO",
                                              "ATS_01_0.BUP"};
    const std::string name = entry.path().filename().string();
    const bool known = std::ranges::find(infoFiles, name) != std::end(infoFiles) ||
                       name.starts_with(".kruv-") || (name.starts_with("ATS_01_") && name.ends_with(".AOB"));
    return known && entry.is_regular_file();
}

/// The files in @p folder; throws when one of them is not ours to remove.
std::vector<fs::path> removableFiles(const fs::path &folder)
{
    std::vector<fs::path> result;
    std::error_code error;
    if (!fs::exists(folder, error)) {
        return result;
    }
    fs::directory_iterator entries(folder, error);
    if (error) {
        fail("read", folder, error);
    }
    for (const fs::directory_entry &entry : entries) {
        if (!isOurs(entry)) {
            throw ToolError(folder.string() + " holds something else: " + entry.path().filename().string());
        }
        result.push_back(entry.path());
    }
    return result;
}

void makeFolder(const fs::path &folder)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        fail("create", folder, error);
    }
}

} // namespace

AudioTree::AudioTree(const fs::path &folder, bool withVideoFolder, std::uint32_t sectorsPerFile)
    : m_audioFolder(folder / "AUDIO_TS")
    , m_bytesPerFile(std::uint64_t{sectorsPerFile} * sectorBytes)
{
    const fs::path videoFolder = folder / "VIDEO_TS";
    const std::vector<fs::path> earlier = removableFiles(m_audioFolder);
    if (withVideoFolder && !removableFiles(videoFolder).empty()) {
        throw ToolError(videoFolder.string() + " is not empty");
    }
    for (const fs::path &file : earlier) {
        std::error_code error;
        if (!fs::remove(file, error) && error) {
            fail("remove", file, error);
        }
    }
    makeFolder(m_audioFolder);
    if (withVideoFolder) {
        makeFolder(videoFolder);
    }
}

AudioTree::~AudioTree()
{
    m_files.clear();
    if (m_completed) {
        return;
    }
    std::error_code ignored;
    for (fs::directory_iterator entry(m_audioFolder, ignored), end; entry != end; entry.increment(ignored)) {
        if (isOurs(*entry)) {
            fs::remove(entry->path(), ignored);
        }
    }
    // Both go only when they are empty.
    fs::remove(m_audioFolder, ignored);
    fs::remove(m_audioFolder.parent_path() / "VIDEO_TS", ignored);
}

tools::OutputFile &AudioTree::add(const std::string &name)
{
    return *m_files.emplace_back(std::make_unique<tools::OutputFile>((m_audioFolder / name).string()));
}

void AudioTree::write(std::span<const std::uint8_t> sectors)
{
    if (m_files.empty() || m_files.back()->position() == m_bytesPerFile) {
        constexpr std::size_t largestFileCount = 9;
        if (m_files.size() == largestFileCount) {
            throw ToolError("the audio does not fit a DVD-Audio group");
        }
        add("ATS_01_" + std::to_string(m_files.size() + 1) + ".AOB");
    }
    m_files.back()->write(sectors);
}

void AudioTree::complete(const Disc &disc, std::optional<std::uint32_t> infoSector)
{
    const std::uint32_t ownSector =
        infoSector.value_or(usualInfoSector(static_cast<std::uint32_t>(m_files.size())));
    for (const char *name : {"ATS_01_0.IFO", "ATS_01_0.BUP"}) {
        add(name).write(titleSetInfo(disc));
    }
    for (const char *name : {"AUDIO_TS.IFO", "AUDIO_TS.BUP"}) {
        add(name).write(managerInfo(disc));
    }
    add("AUDIO_PP.IFO").write(simplePlayerInfo(disc, ownSector));
    for (const auto &file : m_files) {
        file->commit();
    }
    m_completed = true;
}

std::optional<std::uint64_t> freeBytes(fs::path folder)
{
    std::error_code error;
    folder = fs::absolute(folder, error);
    while (!fs::exists(folder, error) && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    const fs::space_info space = fs::space(folder, error);
    if (error) {
        return {};
    }
    return space.available;
}

} // namespace kruv::dvda
