// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace kruv::adapters {

/// The start of a WAV stream up to the first sample or a little further; what there is of any other.
std::string readHeader(int input);

/// What became of a stream that was passed on.
struct Passage
{
    std::uint64_t bytes = 0; // that were taken
    bool isWhole = false;    // all of it was; else nobody wanted the rest, or it could not be read
};

/// Passes on everything that is left of `input`, inside the kernel where one side is a pipe.
Passage passOn(int input, int output);

/// Reads `input` to its end; returns how many bytes there were.
std::uint64_t drain(int input);

} // namespace kruv::adapters
