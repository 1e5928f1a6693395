// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Md5.h"
#include "StreamInfo.h"
#include "common/LittleEndian.h"

#include <array>
#include <cstdint>
#include <span>

namespace kruv::mac {

constexpr std::size_t descriptorBytes = 52;
constexpr std::size_t headerBytes = 24;

/// Flags of the header that matter from version 3.95 on. The lower ones belong to headers without descriptor.
constexpr uint16_t flag8Bit = 1;
constexpr uint16_t flagPeakLevel = 4;
constexpr uint16_t flag24Bit = 8;
constexpr uint16_t flagSeekElements = 16;
constexpr uint16_t flagNoWavHeader = 32;
/// The stored header belongs to another kind of file (AIFF, W64, SND, CAF).
constexpr uint16_t flagsForeignHeader = 64 | 128 | 256 | 1024;
/// Big-endian samples, signed 8-bit samples, floating point.
constexpr uint16_t flagsUnsupported = 512 | 2048 | 4096;

/// The first structure of a file; sizes are in bytes.
struct Descriptor
{
    uint16_t version = versionWritten;
    uint32_t descriptorSize = descriptorBytes;
    uint32_t headerSize = headerBytes;
    uint32_t seekTableSize = 0;
    uint32_t wavHeaderSize = 0;
    uint64_t frameDataSize = 0;
    uint32_t tailSize = 0;
    Md5Digest md5{};

    static Descriptor parse(std::span<const uint8_t, descriptorBytes> bytes);
    std::array<uint8_t, descriptorBytes> serialise() const;
};

/// The header behind the descriptor.
StreamInfo parseHeader(std::span<const uint8_t, headerBytes> bytes);
std::array<uint8_t, headerBytes> serialiseHeader(const StreamInfo &info);

} // namespace kruv::mac
