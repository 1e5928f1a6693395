// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

namespace kruv {

class FileHead;

/// Bare streams of MPEG audio have no header of their own; frames that follow each other tell them.
namespace MpegFrames {

enum class Kind { None, Layers, Adts };

struct Found
{
    Kind kind = Kind::None;
    std::int64_t start = 0; ///< of the first frame in the file
};

/// Looks from `start`, and a little behind it for what a careless tagger left there.
Found find(FileHead &file, std::int64_t start, std::int64_t end);

} // namespace MpegFrames

} // namespace kruv
