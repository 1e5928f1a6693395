// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace kruv::tools {

/// Where bytes go. Coders write to this, so that they need not know whether a file, a pipe or memory takes
/// them.
class ByteSink
{
public:
    virtual ~ByteSink() = default;

    /// Takes all of bytes or throws ToolError.
    virtual void write(std::span<const std::uint8_t> bytes) = 0;
};

} // namespace kruv::tools
