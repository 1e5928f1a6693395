// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ApeReader.h"
#include "FrameDecoder.h"
#include "Md5.h"
#include "RandomInput.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kruv::mac {

/// Decodes the audio of an .ape file frame by frame, and compares all checksums on the way.
class Decompressor
{
public:
    /// Reads everything but the audio. The input must outlive the decompressor. Throws MacError.
    explicit Decompressor(const RandomInput &input);

    const ApeReader &reader() const { return m_reader; }
    const StreamInfo &info() const { return m_reader.info(); }
    /// How many frames have been decoded.
    uint32_t framesDone() const { return m_frame; }
    /// The samples of the next frame as they stand in a WAV file, valid until the next call; empty at the
    /// end, which is to be asked for once. Throws MacError at the first damage.
    std::span<const uint8_t> next();

private:
    void decodeFrame();
    void followDigest(uint64_t offset);
    void addToDigest(ApeReader::Range range);
    void checkDigest();

    const RandomInput &m_input;
    const ApeReader m_reader;
    FrameDecoder m_decoder;
    uint32_t m_frame = 0;
    std::vector<uint8_t> m_pcm;
    Md5 m_md5; ///< follows the decoder, while the bytes are still in the system's cache
    uint64_t m_digested;
};

} // namespace kruv::mac
