// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ttaenc/BitReader.h"
#include "ttaenc/StreamHeader.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kruv::tools {
class ByteSink;
class InputStream;
} // namespace kruv::tools

namespace kruv::ttaenc {

/// Decodes a TTA stream and finds out what is wrong with it.
class Decoder
{
public:
    /// Reads header and table; the input stands at the "TTA1". It must outlive the decoder.
    explicit Decoder(tools::InputStream &input);

    const StreamHeader &header() const { return m_header; }
    /// Writes a WAV file. A damaged frame becomes silence of its length and a line in problems().
    /// ToolError when the input ends early. progress gets frames done and frames in all.
    void run(tools::ByteSink &output, const std::function<void(std::uint64_t, std::uint64_t)> &progress);

    /// What was wrong and where, a line each; empty when all checksums are right and every bit was used.
    const std::vector<std::string> &problems() const { return m_problems; }

private:
    void readTable();
    void checkTotalSize();
    void decodeFrame(std::uint32_t frame, tools::ByteSink &output);
    void addProblem(const std::string &text);
    std::string place(std::uint32_t frame) const;

    tools::InputStream &m_input;
    StreamHeader m_header;
    std::vector<std::uint8_t> m_table; ///< as in the file; without the checksum
    bool m_tableUsable = true;
    BitReader m_reader;
    std::vector<std::int32_t> m_samples;
    std::vector<std::uint8_t> m_bytes;
    std::vector<std::string> m_problems;
};

} // namespace kruv::ttaenc
