// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <cstdint>
#include <vector>

/// What WAV (RIFF, RF64) and AIFF files hold beside their audio and the tags that are read here: cue points,
/// broadcast metadata, info lists, markers and what programs of all kinds leave.
namespace kruv::ForeignChunks {

/// In bytes, with its header of eight bytes and without the padding byte.
struct Chunk
{
    std::int64_t offset = 0;
    std::int64_t size = 0;
};

/// Those that mean something to somebody. None where a file is of another kind, or can't be read.
std::vector<Chunk> of(const QString &path);

} // namespace kruv::ForeignChunks
