// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/ByteSink.h"
#include "common/ToolError.h"

/// Takes output up to a limit, so that a few bytes which stand for hours of silence do not slow the search.
class LimitedSink : public kruv::tools::ByteSink
{
public:
    void write(std::span<const std::uint8_t> bytes) override
    {
        m_written += bytes.size();
        if (m_written > 4u * 1024 * 1024) {
            throw kruv::tools::ToolError("enough");
        }
    }

private:
    std::uint64_t m_written = 0;
};
