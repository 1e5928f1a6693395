// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ApeWriter.h"

#include "MacError.h"

#include <limits>

namespace kruv::mac {

ApeWriter::ApeWriter(tools::OutputFile &output, uint32_t frames, std::span<const uint8_t> wavHeader)
    : m_output(output)
{
    m_descriptor.seekTableSize = 4 * frames;
    m_descriptor.wavHeaderSize = static_cast<uint32_t>(wavHeader.size());
    m_output.write(std::vector<uint8_t>(descriptorBytes + headerBytes + m_descriptor.seekTableSize));
    m_output.write(wavHeader);
    m_md5.add(wavHeader);
}

void ApeWriter::write(std::span<const uint8_t> frameData)
{
    m_descriptor.frameDataSize += frameData.size();
    m_md5.add(frameData);
    m_output.write(frameData);
}

void ApeWriter::writeTail(std::span<const uint8_t> bytes)
{
    m_tailSize += bytes.size();
    if (m_tailSize > std::numeric_limits<uint32_t>::max()) {
        throw MacError(ErrorNumber::InputTooLarge, "what follows the audio is larger than a file can hold");
    }
    m_md5.add(bytes);
    m_output.write(bytes);
}

void ApeWriter::finish(const StreamInfo &info, std::span<const uint64_t> frameStarts)
{
    m_descriptor.tailSize = static_cast<uint32_t>(m_tailSize);
    const uint64_t dataStart =
        descriptorBytes + headerBytes + m_descriptor.seekTableSize + m_descriptor.wavHeaderSize;
    std::vector<uint8_t> seekTable(m_descriptor.seekTableSize);
    for (std::size_t i = 0; i < frameStarts.size(); ++i) {
        tools::writeLe32(&seekTable[4 * i], static_cast<uint32_t>(dataStart + frameStarts[i]));
    }
    const auto header = serialiseHeader(info);
    m_md5.add(header);
    m_md5.add(seekTable);
    m_descriptor.md5 = m_md5.finish();

    m_output.rewrite(0, m_descriptor.serialise());
    m_output.rewrite(descriptorBytes, header);
    m_output.rewrite(descriptorBytes + headerBytes, seekTable);
}

} // namespace kruv::mac
