// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kruv::adapters {

/// One text and what stands in its place.
struct Replacement
{
    std::string text;
    std::string substitute;
};

/// Replaces given texts in a stream that comes in pieces cut anywhere; of several that fit, the longest. Only
/// the shortest possible tail is held back: what might be the start of one of the texts.
class TextReplacer
{
public:
    explicit TextReplacer(std::vector<Replacement> replacements);

    /// What can be passed on after this piece.
    std::string feed(std::string_view piece);

    /// What was held back, at the end of the stream.
    std::string flush();

private:
    std::string replaceHeld(bool atEnd);
    /// The longest text that `rest` begins with, or null; and whether a longer one may, once more of the
    /// stream is there.
    std::pair<const Replacement *, bool> longestAt(std::string_view rest) const;

    std::vector<Replacement> m_replacements; // sorted by text: a run over a collection has thousands
    std::string m_held;
};

} // namespace kruv::adapters
