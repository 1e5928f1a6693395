// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "InfoFiles.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kruv::dvda {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint16_t formatVersion = 0x0012;
constexpr std::uint32_t lastTableByte = 0x7FF;
constexpr std::uint32_t managerSectors = 3;
constexpr std::uint32_t simplePlayerSectors = 64;
/// The attenuations of a downmix to stereo: fronts -6 dB, centre -9, surrounds -12, LFE -15.
constexpr std::array<std::uint8_t, 18> downmixTable = {0,    0,    0x1E, 0xFF, 0xFF, 0x1E, 0x2D, 0x2D, 0x3C,
                                                       0xFF, 0xFF, 0x3C, 0x4B, 0x4B, 0,    0,    0,    0};

void put(Bytes &bytes, std::size_t offset, std::uint64_t value, unsigned size)
{
    for (unsigned i = 0; i < size; ++i) {
        bytes.at(offset + i) = static_cast<std::uint8_t>(value >> (8 * (size - 1 - i)));
    }
}
void put8(Bytes &bytes, std::size_t offset, std::uint64_t value)
{
    put(bytes, offset, value, 1);
}
void put16(Bytes &bytes, std::size_t offset, std::uint64_t value)
{
    put(bytes, offset, value, 2);
}
void put32(Bytes &bytes, std::size_t offset, std::uint64_t value)
{
    put(bytes, offset, value, 4);
}

template <typename Range> void putBytes(Bytes &bytes, std::size_t offset, const Range &range)
{
    for (const auto byte : range) {
        put8(bytes, offset++, static_cast<std::uint8_t>(byte));
    }
}

std::size_t titleRecordBytes(const Title &title)
{
    return 16 + 32 * title.tracks.size();
}

std::size_t titleTableBytes(const Disc &disc)
{
    std::size_t size = 8 + 8 * disc.titles.size();
    for (const Title &title : disc.titles) {
        size += titleRecordBytes(title);
    }
    return size;
}

std::uint32_t titleSetSectors(const Disc &disc)
{
    return static_cast<std::uint32_t>(1 + (titleTableBytes(disc) + sectorBytes - 1) / sectorBytes);
}

std::vector<LpcmFormat> formatsOf(const Disc &disc)
{
    std::vector<LpcmFormat> formats;
    for (const Title &title : disc.titles) {
        if (std::ranges::find(formats, title.format) == formats.end()) {
            formats.push_back(title.format);
        }
    }
    return formats;
}

void putTitleRecord(Bytes &bytes, std::size_t offset, const Title &title, std::size_t formatSlot)
{
    const std::size_t count = title.tracks.size();
    put8(bytes, offset + 2, count);
    put8(bytes, offset + 3, count); // entries of the sector table: one index a track
    put32(bytes, offset + 4, title.length());
    put16(bytes, offset + 10, 16);              // track table
    put16(bytes, offset + 12, 16 + 20 * count); // sector table
    for (std::size_t k = 0; k < count; ++k) {
        const Track &track = title.tracks[k];
        const std::size_t entry = offset + 16 + 20 * k;
        const std::uint32_t clockStarts = k == 0 ? 0xC000 : 0;
        const std::uint32_t noDownmix = title.format.hasDownmix() ? 0 : 0x10;
        put16(bytes, entry, clockStarts | formatSlot << 11 | noDownmix);
        put8(bytes, entry + 4, k + 1); // its first entry in the sector table
        put32(bytes, entry + 6, track.firstTime);
        put32(bytes, entry + 10, track.length);

        const std::size_t sectors = offset + 16 + 20 * count + 12 * k;
        put8(bytes, sectors, 1); // index number
        put32(bytes, sectors + 4, track.firstSector);
        put32(bytes, sectors + 8, track.lastSector);
    }
}

void putTitleTable(Bytes &bytes, const Disc &disc, const std::vector<LpcmFormat> &formats)
{
    const std::size_t table = sectorBytes;
    put16(bytes, table, disc.titles.size());
    put32(bytes, table + 4, titleTableBytes(disc) - 1);
    std::size_t record = 8 + 8 * disc.titles.size();
    for (std::size_t j = 0; j < disc.titles.size(); ++j) {
        const Title &title = disc.titles[j];
        put8(bytes, table + 8 + 8 * j, 0x80 | (j + 1));
        put8(bytes, table + 9 + 8 * j, 1);
        put32(bytes, table + 12 + 8 * j, record);
        const auto slot = std::ranges::find(formats, title.format) - formats.begin();
        putTitleRecord(bytes, table + record, title, static_cast<std::size_t>(slot));
        record += titleRecordBytes(title);
    }
}

/// The table that the manager has twice: all titles with audio, and the titles with audio only.
void putManagerTable(Bytes &bytes, std::size_t offset, const Disc &disc)
{
    put16(bytes, offset, disc.titles.size());
    put16(bytes, offset + 2, 4 + 14 * disc.titles.size() - 1);
    for (std::size_t j = 0; j < disc.titles.size(); ++j) {
        const std::size_t entry = offset + 4 + 14 * j;
        put8(bytes, entry, 0x81); // audio, group 1
        put8(bytes, entry + 1, disc.titles[j].tracks.size());
        put32(bytes, entry + 4, disc.titles[j].length());
        put8(bytes, entry + 8, 1); // title set
        put8(bytes, entry + 9, j + 1);
        put32(bytes, entry + 10, std::uint64_t(2) * managerSectors); // distance to the title set
    }
}

void putSimplePlayerRecord(Bytes &bytes, std::size_t offset, const Title &title, const Track &track,
                           std::size_t number, std::uint32_t audioStart)
{
    put8(bytes, offset + 2, 1); // group
    put8(bytes, offset + 3, number);
    put32(bytes, offset + 4, track.firstTime);
    put32(bytes, offset + 8, track.length);
    const unsigned firstOfGroup = number == 1 ? 0x80 : 0;
    const unsigned noDownmix = title.format.hasDownmix() ? 0 : 0x08;
    put8(bytes, offset + 16, 0x40 | firstOfGroup | noDownmix);
    putBytes(bytes, offset + 17, title.format.code());
    if (title.format.hasDownmix()) {
        putBytes(bytes, offset + 22, downmixTable);
    }
    put32(bytes, offset + 40, audioStart + track.firstSector);
    put32(bytes, offset + 44, audioStart + track.firstSector);
    put32(bytes, offset + 48, audioStart + track.lastSector);
}

} // namespace

Bytes titleSetInfo(const Disc &disc)
{
    const std::uint32_t sectors = titleSetSectors(disc);
    Bytes bytes(sectors * sectorBytes);
    putBytes(bytes, 0, std::string_view("DVDAUDIO-ATS"));
    put32(bytes, 0x0C, 2 * sectors + disc.audioSectors - 1); // last sector of the title set, with the backup
    put32(bytes, 0x1C, sectors - 1);
    put16(bytes, 0x20, formatVersion);
    put32(bytes, 0x80, lastTableByte);
    put32(bytes, 0xC4, sectors); // the audio starts behind this file
    put32(bytes, 0xCC, 1);       // the title table

    const std::vector<LpcmFormat> formats = formatsOf(disc);
    for (std::size_t i = 0; i < formats.size(); ++i) {
        putBytes(bytes, 0x102 + 16 * i, formats[i].code());
    }
    for (std::size_t i = 0; i < 16; ++i) {
        putBytes(bytes, 0x180 + 18 * i, downmixTable);
    }
    putTitleTable(bytes, disc, formats);
    return bytes;
}

Bytes managerInfo(const Disc &disc)
{
    Bytes bytes(managerSectors * sectorBytes);
    putBytes(bytes, 0, std::string_view("DVDAUDIO-AMG"));
    put32(bytes, 0x0C, 2 * managerSectors - 1); // last sector of the backup
    put32(bytes, 0x1C, managerSectors - 1);
    put16(bytes, 0x20, formatVersion);
    put16(bytes, 0x26, 1); // volumes
    put16(bytes, 0x28, 1); // this volume
    put8(bytes, 0x2A, 1);  // disc side
    put8(bytes, 0x3F, 1);  // audio title sets
    put32(bytes, 0x80, lastTableByte);
    put32(bytes, 0xC4, 1);
    put32(bytes, 0xC8, 2);
    putManagerTable(bytes, sectorBytes, disc);
    putManagerTable(bytes, 2 * sectorBytes, disc);
    return bytes;
}

Bytes simplePlayerInfo(const Disc &disc, std::uint32_t ownSector)
{
    constexpr std::size_t copies = 8;
    Bytes bytes(simplePlayerSectors * sectorBytes / copies);
    putBytes(bytes, 0, std::string_view("DVDAUDIOSAPP"));
    put16(bytes, 14, formatVersion);
    const std::uint32_t audioStart =
        ownSector + simplePlayerSectors + 2 * managerSectors + titleSetSectors(disc);
    std::size_t number = 0;
    for (const Title &title : disc.titles) {
        for (const Track &track : title.tracks) {
            putSimplePlayerRecord(bytes, 16 + 52 * number, title, track, number + 1, audioStart);
            ++number;
        }
    }
    put16(bytes, 12, number);

    Bytes result;
    result.reserve(bytes.size() * copies);
    for (std::size_t i = 0; i < copies; ++i) {
        result.insert(result.end(), bytes.begin(), bytes.end());
    }
    return result;
}

std::uint32_t usualInfoSector(std::uint32_t aobFiles)
{
    constexpr std::uint32_t informationFiles = 5;
    return 272 + informationFiles + aobFiles;
}

std::uint32_t discSectors(const Disc &disc)
{
    return simplePlayerSectors + 2 * managerSectors + 2 * titleSetSectors(disc) + disc.audioSectors;
}

} // namespace kruv::dvda
