// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileLayout.h"

#include <algorithm>

namespace kruv::mac {

using tools::readLe16;
using tools::readLe32;
using tools::writeLe16;
using tools::writeLe32;

Descriptor Descriptor::parse(std::span<const uint8_t, descriptorBytes> bytes)
{
    Descriptor result;
    result.version = readLe16(&bytes[4]);
    result.descriptorSize = readLe32(&bytes[8]);
    result.headerSize = readLe32(&bytes[12]);
    result.seekTableSize = readLe32(&bytes[16]);
    result.wavHeaderSize = readLe32(&bytes[20]);
    result.frameDataSize = uint64_t{readLe32(&bytes[28])} << 32 | readLe32(&bytes[24]);
    result.tailSize = readLe32(&bytes[32]);
    std::copy_n(&bytes[36], result.md5.size(), result.md5.begin());
    return result;
}

std::array<uint8_t, descriptorBytes> Descriptor::serialise() const
{
    std::array<uint8_t, descriptorBytes> bytes{'M', 'A', 'C', ' '};
    writeLe16(&bytes[4], version);
    writeLe32(&bytes[8], descriptorSize);
    writeLe32(&bytes[12], headerSize);
    writeLe32(&bytes[16], seekTableSize);
    writeLe32(&bytes[20], wavHeaderSize);
    writeLe32(&bytes[24], static_cast<uint32_t>(frameDataSize));
    writeLe32(&bytes[28], static_cast<uint32_t>(frameDataSize >> 32));
    writeLe32(&bytes[32], tailSize);
    std::copy(md5.begin(), md5.end(), &bytes[36]);
    return bytes;
}

StreamInfo parseHeader(std::span<const uint8_t, headerBytes> bytes)
{
    StreamInfo info;
    info.level = readLe16(&bytes[0]);
    info.flags = readLe16(&bytes[2]);
    info.blocksPerFrame = readLe32(&bytes[4]);
    info.finalFrameBlocks = readLe32(&bytes[8]);
    info.totalFrames = readLe32(&bytes[12]);
    info.bitsPerSample = readLe16(&bytes[16]);
    info.channels = readLe16(&bytes[18]);
    info.sampleRate = readLe32(&bytes[20]);
    return info;
}

std::array<uint8_t, headerBytes> serialiseHeader(const StreamInfo &info)
{
    std::array<uint8_t, headerBytes> bytes{};
    writeLe16(&bytes[0], info.level);
    writeLe16(&bytes[2], info.flags);
    writeLe32(&bytes[4], info.blocksPerFrame);
    writeLe32(&bytes[8], info.finalFrameBlocks);
    writeLe32(&bytes[12], info.totalFrames);
    writeLe16(&bytes[16], info.bitsPerSample);
    writeLe16(&bytes[18], info.channels);
    writeLe32(&bytes[20], info.sampleRate);
    return bytes;
}

} // namespace kruv::mac
