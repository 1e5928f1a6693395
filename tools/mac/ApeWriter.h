// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FileLayout.h"
#include "common/ByteSink.h"
#include "common/OutputFile.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kruv::mac {

/// Writes an .ape file around frame data: header data first, then write() for the packed frames, then
/// writeTail(), then finish().
class ApeWriter : public tools::ByteSink
{
public:
    /// Leaves room in front for `frames` seek entries. The output must be rewritable, empty, and outlive the
    /// writer.
    ApeWriter(tools::OutputFile &output, uint32_t frames, std::span<const uint8_t> wavHeader);

    void write(std::span<const uint8_t> frameData) override;
    void writeTail(std::span<const uint8_t> bytes);
    /// Fills the front in; `info` and `frameStarts` describe the frames now known.
    void finish(const StreamInfo &info, std::span<const uint64_t> frameStarts);

private:
    tools::OutputFile &m_output;
    Md5 m_md5;
    Descriptor m_descriptor;
    uint64_t m_tailSize = 0;
};

} // namespace kruv::mac
