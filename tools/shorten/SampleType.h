// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kruv::shorten {

/// How the samples of a stream lie in the decoded bytes.
struct SampleType
{
    std::uint32_t number;
    std::uint32_t bytes; ///< 1 or 2
    bool isSigned;
    bool highByteFirst;

    std::int32_t smallest() const { return isSigned ? -(1 << (8 * bytes - 1)) : 0; }
    std::int32_t largest() const { return smallest() + (1 << (8 * bytes)) - 1; }
    /// The value of silence, from which the mean estimate starts.
    std::int32_t centre() const { return isSigned ? 0 : 1 << (8 * bytes - 1); }

    /// Throws ToolError for the numbers that are not linear PCM.
    static const SampleType &byNumber(std::uint32_t number);
};

} // namespace kruv::shorten
