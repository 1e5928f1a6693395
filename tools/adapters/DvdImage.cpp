// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "DvdImage.h"

#include "File.h"
#include "MkisofsAdapter.h"

#include <algorithm>
#include <string_view>
#include <unistd.h>

namespace kruv::adapters {

namespace {

constexpr std::uint32_t sectorSize = 2048;

std::uint32_t littleEndian(std::string_view bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

std::uint32_t bigEndian(std::string_view bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

void putBigEndian(std::string &bytes, std::size_t at, std::uint32_t value)
{
    for (std::size_t i = 4; i-- > 0; value >>= 8) {
        bytes[at + i] = static_cast<char>(value & 0xFF);
    }
}

std::uint32_t sectorsOf(std::uint32_t size)
{
    return size / sectorSize + (size % sectorSize != 0);
}

} // namespace

DvdImage::DvdImage(int descriptor)
    : m_descriptor(descriptor)
{
}

std::string DvdImage::complete()
{
    const auto files = audioFiles();
    if (files.size() < 4) {
        return "the image holds no complete AUDIO_TS folder";
    }
    for (std::size_t i = 1; i < files.size(); ++i) {
        const auto expected = files[i - 1].sector + sectorsOf(files[i - 1].size);
        if (files[i].sector != expected) {
            return "the files of AUDIO_TS are out of order in the image (" + files[i].name +
                   " lies at sector " + std::to_string(files[i].sector) + ", expected " +
                   std::to_string(expected) + ")";
        }
    }
    const auto find = [&files](std::string_view name) {
        return std::find_if(files.begin(), files.end(),
                            [name](const auto &file) { return file.name == name; });
    };
    const auto tracks = find("AUDIO_PP.IFO");
    const auto firstObject = find("ATS_01_1.AOB");
    if (tracks == files.end() || firstObject == files.end()) {
        return "the image holds no audio object or no track table";
    }
    constexpr std::size_t firstTrackSector = 16 + 40;
    const auto record =
        readAt(m_descriptor, firstTrackSector + 4, static_cast<long long>(tracks->sector) * sectorSize);
    if (record.size() != firstTrackSector + 4 || record.compare(0, 12, "DVDAUDIOSAPP") != 0) {
        return "the track table of the image is damaged";
    }
    const auto shift = firstObject->sector - bigEndian(record, firstTrackSector);
    return shift == 0 || shiftTracks(tracks->sector, shift) ? std::string()
                                                            : "the track table of the image can't be written";
}

std::vector<DvdImage::Entry> DvdImage::readFolder(std::uint32_t sector, std::uint32_t size) const
{
    constexpr std::uint32_t sizeLimit = 1 << 20; // a folder of some 20,000 files: not one of ours
    const auto records =
        readAt(m_descriptor, std::min(size, sizeLimit), static_cast<long long>(sector) * sectorSize);
    std::vector<Entry> entries;
    for (std::size_t at = 0; at < records.size();) {
        const std::size_t length = static_cast<unsigned char>(records[at]);
        if (length == 0) {
            at = (at / sectorSize + 1) * sectorSize; // records don't cross sectors
            continue;
        }
        constexpr std::size_t fixedPart = 33;
        if (length < fixedPart || at + length > records.size()) {
            break;
        }
        const std::size_t nameLength =
            std::min<std::size_t>(static_cast<unsigned char>(records[at + 32]), length - fixedPart);
        Entry entry{records.substr(at + fixedPart, nameLength), littleEndian(records, at + 2),
                    littleEndian(records, at + 10)};
        entry.name.erase(std::min(entry.name.find(';'), entry.name.size()));
        if (!entries.empty() && entries.back().name == entry.name) {
            entries.back().size += entry.size;
        } else {
            entries.push_back(std::move(entry));
        }
        at += length;
    }
    return entries;
}

std::vector<DvdImage::Entry> DvdImage::audioFiles() const
{
    constexpr auto volumeDescriptor = 16LL * sectorSize;
    constexpr std::size_t rootRecord = 156;
    const auto descriptor = readAt(m_descriptor, sectorSize, volumeDescriptor);
    if (descriptor.size() != sectorSize || descriptor.compare(1, 5, "CD001") != 0) {
        return {};
    }
    const auto root =
        readFolder(littleEndian(descriptor, rootRecord + 2), littleEndian(descriptor, rootRecord + 10));
    const auto folder =
        std::find_if(root.begin(), root.end(), [](const auto &entry) { return entry.name == "AUDIO_TS"; });
    if (folder == root.end()) {
        return {};
    }
    const auto entries = readFolder(folder->sector, folder->size);
    std::vector<std::string> names;
    names.reserve(entries.size());
    for (const auto &entry : entries) {
        names.push_back(entry.name);
    }
    std::vector<Entry> files;
    for (const auto &name : dvdAudioOrder(names)) {
        files.push_back(*std::find_if(entries.begin(), entries.end(),
                                      [&](const auto &entry) { return entry.name == name; }));
    }
    return files;
}

bool DvdImage::shiftTracks(std::uint32_t sector, std::uint32_t shift) const
{
    // The table is one block of 16 KiB in eight equal copies.
    constexpr std::size_t blockSize = 16384;
    constexpr int copies = 8;
    constexpr std::size_t firstRecord = 16;
    constexpr std::size_t recordSize = 52;
    const auto start = static_cast<long long>(sector) * sectorSize;
    auto block = readAt(m_descriptor, blockSize, start);
    if (block.size() != blockSize) {
        return false;
    }
    const std::size_t tracks = static_cast<std::size_t>(static_cast<unsigned char>(block[12])) << 8 |
                               static_cast<unsigned char>(block[13]);
    for (std::size_t track = 0; track < tracks; ++track) {
        const auto record = firstRecord + track * recordSize;
        if (record + recordSize > blockSize) {
            return false;
        }
        for (const std::size_t field : {40U, 44U, 48U}) {
            putBigEndian(block, record + field, bigEndian(block, record + field) + shift);
        }
    }
    for (int copy = 0; copy < copies; ++copy) {
        if (lseek(m_descriptor, start + copy * static_cast<long long>(blockSize), SEEK_SET) < 0 ||
            !writeAll(m_descriptor, block)) {
            return false;
        }
    }
    return true;
}

} // namespace kruv::adapters
