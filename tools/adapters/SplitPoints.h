// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace kruv::adapters {

/// What a byte position in the audio means.
struct PcmLayout
{
    unsigned rate = 0;      // frames per second
    unsigned frameSize = 0; // bytes

    bool isCdLike() const { return rate == 44100 && frameSize == 4; }
};

/// The split points of a cue sheet (its INDEX 01 lines) or of a list (one point a line: bytes, m:ss, m:ss.ff
/// with CD frames, or m:ss.nnn) as a list of byte positions. shntool counts times at the CD's rate whatever
/// the audio is, so other audio would be cut at wrong places without a word. Nothing when `text` holds
/// anything else; shntool then says what is wrong.
std::optional<std::string> splitPointsInBytes(const std::string &text, const PcmLayout &layout);

/// The same text as shntool can read it: a byte a character, lines that end with a line feed. It takes no
/// UTF-16, with or without a byte-order mark, and no line that ends with a carriage return alone. What is not
/// ASCII in UTF-16 becomes a question mark; no point needs it.
std::string plainSplitPoints(const std::string &text);

} // namespace kruv::adapters
