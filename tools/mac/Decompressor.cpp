// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Decompressor.h"

#include "MacError.h"

#include <string>

namespace kruv::mac {

Decompressor::Decompressor(const RandomInput &input)
    : m_input(input)
    , m_reader(input)
    , m_decoder(m_reader.info())
    , m_digested(m_reader.digestRanges()[0].offset)
{
}

std::span<const uint8_t> Decompressor::next()
{
    if (m_frame == info().totalFrames) {
        checkDigest();
        return {};
    }
    decodeFrame();
    followDigest(m_reader.frameEnd(m_frame));
    ++m_frame;
    return m_pcm;
}

void Decompressor::decodeFrame()
{
    m_pcm.resize(std::size_t{info().blocksOfFrame(m_frame)} * info().blockBytes());
    FrameBytes bytes = m_reader.frameBytes(m_frame);
    try {
        m_decoder.decode(bytes, m_pcm);
    } catch (const MacError &error) {
        throw MacError(error.number(), m_input.name() + ": " + error.what() + " (frame " +
                                           std::to_string(m_frame + 1) + " of " +
                                           std::to_string(info().totalFrames) + ")");
    }
}

void Decompressor::followDigest(uint64_t offset)
{
    if (m_reader.digest() && offset > m_digested) {
        addToDigest({m_digested, offset - m_digested});
        m_digested = offset;
    }
}

void Decompressor::addToDigest(ApeReader::Range range)
{
    m_reader.read(range, [this](std::span<const uint8_t> piece) { m_md5.add(piece); });
}

void Decompressor::checkDigest()
{
    if (!m_reader.digest()) {
        return;
    }
    const auto [content, header, seekTable] = m_reader.digestRanges();
    followDigest(content.end());
    addToDigest(header);
    addToDigest(seekTable);
    if (m_md5.finish() != *m_reader.digest()) {
        throw MacError(ErrorNumber::Checksum, m_input.name() + ": the file does not match its MD5 checksum");
    }
}

} // namespace kruv::mac
