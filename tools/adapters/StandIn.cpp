// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "StandIn.h"

#include "File.h"
#include "WavHeader.h"
#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/ToolError.h"
#include "common/WavReader.h"

#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <span>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

// More than any header in the wild, pictures and broadcast notes included.
constexpr std::size_t headerLimit = 1 << 20;
constexpr std::size_t magicSize = 32;
constexpr std::string_view marker("kruv-source\n");

// A WavPack block header of the last version that shntool takes, and the start of a FLAC file.
constexpr std::string_view wavPackMagic("wvpk\x18\x00\x00\x00\x07\x04", 10);
constexpr std::string_view flacMagic("fLaC");

bool hasOddChunk(std::span<const std::uint8_t> header)
{
    constexpr std::size_t riffHead = 12;
    constexpr std::size_t chunkHead = 8;
    for (std::size_t at = riffHead; at + chunkHead < header.size();) {
        const std::uint32_t size = tools::readLe32(&header[at + 4]);
        if (size % 2 != 0) {
            return true;
        }
        at += chunkHead + size;
    }
    return false;
}

bool writeStandIn(const std::string &path, const std::string &source, const std::string &content)
{
    constexpr mode_t ownerOnly = 0600;
    struct stat status;
    const File file(open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, ownerOnly));
    if (!file || !writeAll(file.descriptor(), content)) {
        return false;
    }
    if (stat(source.c_str(), &status) == 0 && status.st_size > static_cast<off_t>(content.size())) {
        return ftruncate(file.descriptor(), status.st_size) == 0;
    }
    return true;
}

// shntool knows neither chunks that are filled up nor lengths that are left open.
bool isUnusualWav(const std::string &path)
try {
    tools::InputStream input(path);
    if (!tools::WavReader::isWav(input)) {
        return false;
    }
    const tools::WavReader reader(input, tools::WavTolerance::Repair);
    return !reader.isRiff() || !reader.statesLength() || hasOddChunk(reader.header());
} catch (const tools::ToolError &) {
    return false;
}

} // namespace

SourceKind sourceKind(const std::string &path)
{
    constexpr std::size_t usualHeader = 512;
    auto start = readStart(path, usualHeader);
    if (start.starts_with("wvpk")) {
        return SourceKind::WavPack;
    }
    if (isUnusualWav(path)) {
        return SourceKind::UnusualPcm;
    }
    if (start.starts_with("RIFF") && !WavHeader::parse(start)) {
        start = readStart(path, headerLimit);
    }
    return isExtensiblePcm(start) ? SourceKind::ExtensibleWav : SourceKind::Direct;
}

bool writeStreamStandIn(const std::string &path, const std::string &source, SourceKind kind)
{
    const std::unique_ptr<char, decltype(&free)> real(realpath(source.c_str(), nullptr), free);
    if (!real) {
        return false;
    }
    std::string content(kind == SourceKind::WavPack ? wavPackMagic : flacMagic);
    content.resize(magicSize);
    content.append(marker).append(real.get()).push_back('\0');
    return writeStandIn(path, source, content);
}

bool writeHeaderStandIn(const std::string &path, const std::string &source)
{
    auto start = readStart(source, headerLimit);
    if (const auto header = WavHeader::parse(start)) {
        start.resize(header->data);
    }
    return writeStandIn(path, source, plainHeader(std::move(start)));
}

std::string behindStandIn(const std::string &path)
{
    const auto start = readStart(path, magicSize + marker.size() + PATH_MAX);
    if (start.size() <= magicSize + marker.size() || start.compare(magicSize, marker.size(), marker) != 0) {
        return path;
    }
    const auto name = start.substr(magicSize + marker.size());
    return name.substr(0, name.find('\0'));
}

} // namespace kruv::adapters
