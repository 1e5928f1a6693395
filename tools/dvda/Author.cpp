// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Author.h"

#include "AudioTree.h"
#include "InfoFiles.h"
#include "Log.h"
#include "PackWriter.h"
#include "TrackSource.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>

namespace kruv::dvda {
namespace {

using tools::ToolError;

constexpr std::size_t largestTrackCount = 99;
constexpr std::uint64_t singleLayerSectors = 2'295'104;
constexpr std::uint64_t doubleLayerSectors = 4'171'712;
/// File systems, information files and padding of the image; more than they need.
constexpr std::uint64_t sectorsBesideAudio = 1024;

std::string absolutePath(const std::string &path)
{
    std::error_code error;
    const auto result = std::filesystem::absolute(path, error);
    return error ? path : result.string();
}

/// A little more than the audio will take: packs hold at least 1968 bytes of it, but for a track's last two.
std::uint64_t estimatedSectors(const TrackSource &source)
{
    return source.frames().value_or(0) * source.format().bytesPerFrame() / 1968 + 2;
}

std::string inMebibytes(std::uint64_t bytes)
{
    return std::to_string(bytes >> 20) + " MiB";
}

std::string now()
{
    const std::time_t time = std::time(nullptr);
    char text[32] = {};
    std::tm fields{};
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", ::localtime_r(&time, &fields));
    return text;
}

} // namespace

Author::Author(const Options &options, Log &log)
    : m_options(options)
    , m_log(log)
{
}

void Author::run()
{
    inspect();
    AudioTree tree(m_options.outputFolder, m_options.videoFolder);
    checkRoom(); // an earlier tree is gone by now
    writeTracks(tree);
    tree.complete(m_disc, m_options.infoSector);
    m_log.note("Wrote " + std::to_string(m_disc.audioSectors) + " sectors of audio in " +
               std::to_string(m_disc.titles.size()) + " title(s) to " + absolutePath(m_options.outputFolder));
}

void Author::inspect()
{
    if (m_options.files.size() > largestTrackCount) {
        throw ToolError("a DVD-Audio group holds at most 99 tracks, not " +
                        std::to_string(m_options.files.size()));
    }
    std::vector<LpcmFormat> different;
    for (const std::string &file : m_options.files) {
        const TrackSource source(file);
        if (source.frames() == 0U) {
            throw ToolError(file + " holds no audio");
        }
        const LpcmFormat &format = source.format();
        m_log.note(absolutePath(file) + ": " + format.description());
        m_formats.push_back(format);
        m_estimatedSectors += estimatedSectors(source);
        if (std::ranges::find(different, format) == different.end()) {
            different.push_back(format);
        }
    }
    if (different.size() > largestFormatCount) {
        throw ToolError("a DVD-Audio group holds tracks of at most 8 different formats, not " +
                        std::to_string(different.size()));
    }
    checkCapacity();
}

// The estimate is up to 2 % too high for some formats; only what cannot fit is refused beforehand, here and
// in checkRoom().
void Author::checkCapacity() const
{
    if (m_estimatedSectors * 98 / 100 > doubleLayerSectors) {
        throw ToolError("the tracks need about " + inMebibytes(m_estimatedSectors * sectorBytes) +
                        ", more than a double-layer DVD holds");
    }
    if (m_estimatedSectors + sectorsBesideAudio > singleLayerSectors) {
        m_log.note("The disc needs a double-layer DVD");
    }
}

void Author::checkRoom() const
{
    const auto available = freeBytes(m_options.outputFolder);
    if (available && *available < m_estimatedSectors * 98 / 100 * sectorBytes) {
        throw ToolError("not enough room in " + m_options.outputFolder + ": about " +
                        inMebibytes(m_estimatedSectors * sectorBytes) + " are needed, " +
                        inMebibytes(*available) + " are free");
    }
}

void Author::writeTracks(AudioTree &tree)
{
    std::optional<PackWriter> writer;
    for (std::size_t i = 0; i < m_options.files.size(); ++i) {
        if (i == 0 || m_formats[i] != m_formats[i - 1]) {
            writer.emplace(m_formats[i], m_disc.audioSectors, tree);
            m_disc.titles.push_back({m_formats[i], {}});
        }
        const Track track = writeTrack(i, *writer);
        m_disc.titles.back().tracks.push_back(track);
        m_disc.audioSectors = track.lastSector + 1;
        if (m_disc.audioSectors > doubleLayerSectors) {
            throw ToolError("the tracks need more than a double-layer DVD holds");
        }
    }
}

Track Author::writeTrack(std::size_t index, PackWriter &writer)
{
    const std::string &file = m_options.files[index];
    m_log.progress("[Kruv]  Processing " + std::to_string(index + 1) + "::" + absolutePath(file));
    TrackSource source(file);
    if (source.format() != m_formats[index]) {
        throw ToolError(file + " has changed meanwhile");
    }
    std::uint64_t bytes = 0;
    for (auto audio = source.read(); !audio.empty(); audio = source.read()) {
        writer.write(audio);
        bytes += audio.size();
    }
    const bool cutShort = source.finish();
    if (bytes == 0) {
        throw ToolError(file + " holds no audio");
    }
    if (cutShort && !m_options.tolerant) {
        throw ToolError(file + " is shorter than its header says");
    }
    if (cutShort) {
        m_log.warn(file + " is shorter than its header says; the track has what is there");
    }
    if (bytes / source.format().bytesPerFrame() % 2 != 0) {
        m_log.note(file +
                   " has an odd number of frames; a silent one is added, for they are stored in pairs");
    }
    return writer.endTrack();
}

int run(const std::vector<std::string> &arguments)
{
    Options options;
    try {
        options = parseOptions(arguments);
    } catch (const UsageError &error) {
        std::fprintf(stderr, "dvda: %s\n%s", error.what(), usage);
        return 2;
    }
    if (options.action != Action::Author) {
        std::fputs(options.action == Action::ShowHelp ? usage : "dvda " KRUV_VERSION "\n", stdout);
        return 0;
    }
    Log log(options.logFile);
    log.note("dvda " KRUV_VERSION ", " + now());
    try {
        Author(options, log).run();
    } catch (const ToolError &error) {
        log.note(std::string("Failed: ") + error.what());
        throw;
    }
    return 0;
}

} // namespace kruv::dvda
