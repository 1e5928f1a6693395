// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace kruv::adapters {

/// Where bytes come from.
struct Inflow
{
    Inflow(int from,
           int writerProcess = -1) // NOLINT(google-explicit-constructor): nearly all are no more than that
        : descriptor(from)
        , writer(writerProcess)
    {
    }

    int descriptor;
    /// A pidfd: the end of this process is the end of the bytes, whoever else still holds the pipe; -1 for
    /// none.
    int writer;
};

/// The start of a WAV stream up to the first sample or a little further; what there is of any other.
std::string readHeader(Inflow input);

/// What became of a stream that was passed on.
struct Passage
{
    std::uint64_t bytes = 0; // that were taken
    bool isWhole = false;    // all of it was; else nobody wanted the rest, or it could not be read
};

/// Passes on everything that is left of `input`, inside the kernel where one side is a pipe.
Passage passOn(Inflow input, int output);

/// Reads `input` to its end; returns how many bytes there were.
std::uint64_t drain(Inflow input);

} // namespace kruv::adapters
