// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <vector>

namespace kruv {

/// A run that goes on, and what becomes of its entries; all by their numbers in the journal's file.
struct ResumedRun
{
    std::int64_t run = 0;
    std::vector<std::int64_t> waiting = {}; ///< in the order of their jobs
    std::vector<std::int64_t> done = {};    ///< though nobody could say so any more
    std::vector<std::int64_t> dropped = {}; ///< other entries take their places
};

} // namespace kruv
