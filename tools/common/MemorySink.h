// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/ByteSink.h"

#include <utility>
#include <vector>

namespace kruv::tools {

/// A sink that keeps everything in memory.
class MemorySink : public ByteSink
{
public:
    void write(std::span<const std::uint8_t> bytes) override
    {
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    }

    const std::vector<std::uint8_t> &bytes() const { return m_bytes; }
    std::vector<std::uint8_t> take() { return std::exchange(m_bytes, {}); }

private:
    std::vector<std::uint8_t> m_bytes;
};

} // namespace kruv::tools
