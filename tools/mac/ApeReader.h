// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FileLayout.h"
#include "FrameBytes.h"
#include "RandomInput.h"
#include "StreamInfo.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace kruv::mac {

/// The structure of an .ape file of version 3.95 to 3.99. Tags around the stream are passed over.
class ApeReader
{
public:
    /// A run of bytes of the file.
    struct Range
    {
        uint64_t offset = 0;
        uint64_t size = 0;

        uint64_t end() const { return offset + size; }
    };

    /// Reads and checks everything but the audio. The input must outlive the reader. Throws MacError.
    explicit ApeReader(const RandomInput &input);

    const StreamInfo &info() const { return m_info; }
    /// The WAV header as it was in the source; empty when a new one must be made.
    Range wavHeader() const { return m_wavHeader; }
    /// What followed the audio in the source.
    Range tail() const { return m_tail; }
    /// Where the coded frame ends in the file.
    uint64_t frameEnd(uint32_t frame) const;
    FrameBytes frameBytes(uint32_t frame) const;
    using Take = std::function<void(std::span<const uint8_t>)>;
    /// Hands a run of the file out in pieces.
    void read(Range range, const Take &take) const;

    /// The file's MD5, when it has one. It covers digestRanges() in that order.
    const std::optional<Md5Digest> &digest() const { return m_digest; }
    /// Header data, frames and tail in one; the header; the seek table.
    std::array<Range, 3> digestRanges() const { return {m_content, m_header, m_seekTable}; }

private:
    void readCurrent();
    void readOld();
    void checkInfo() const;
    void readSeekTable(Range table);
    void finishLayout(uint64_t frameDataEnd, uint64_t tailSize);
    void readExactly(uint64_t offset, std::span<uint8_t> destination) const;
    [[noreturn]] void refuse(const char *why) const;

    const RandomInput &m_input;
    StreamInfo m_info;
    uint64_t m_start = 0; ///< of the stream in the file, behind tags
    Range m_header;
    Range m_seekTable;
    Range m_wavHeader;
    Range m_content;
    Range m_tail;
    std::optional<Md5Digest> m_digest;
    std::vector<uint64_t> m_frameStarts; ///< offsets in the file
    uint64_t m_dataEnd = 0;
};

} // namespace kruv::mac
