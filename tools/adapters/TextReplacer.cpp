// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "TextReplacer.h"

#include <algorithm>
#include <utility>

namespace kruv::adapters {

TextReplacer::TextReplacer(std::vector<Replacement> replacements)
    : m_replacements(std::move(replacements))
{
    std::erase_if(m_replacements, [](const auto &each) { return each.text.empty(); });
    std::ranges::sort(m_replacements, {}, &Replacement::text);
}

std::string TextReplacer::feed(std::string_view piece)
{
    m_held += piece;
    return replaceHeld(false);
}

std::string TextReplacer::flush()
{
    return replaceHeld(true);
}

std::pair<const Replacement *, bool> TextReplacer::longestAt(std::string_view rest) const
{
    const Replacement *match = nullptr;
    auto first = m_replacements.begin();
    auto last = m_replacements.end();
    // Narrows the sorted texts to those that go on like the stream.
    for (std::size_t length = 0; first != last; ++length) {
        while (first != last && first->text.size() == length) {
            match = &*first++;
        }
        if (length == rest.size()) {
            return {match, first != last};
        }
        const auto next = static_cast<unsigned char>(rest[length]);
        const auto nextOf = [length](const Replacement &each) {
            return static_cast<unsigned char>(each.text[length]);
        };
        first = std::ranges::lower_bound(first, last, next, {}, nextOf);
        last = std::ranges::upper_bound(first, last, next, {}, nextOf);
    }
    return {match, false};
}

std::string TextReplacer::replaceHeld(bool atEnd)
{
    std::string ready;
    std::size_t at = 0;
    while (at < m_held.size()) {
        const auto [match, undecided] = longestAt(std::string_view(m_held).substr(at));
        if (undecided && !atEnd) {
            break; // a longer piece may complete it
        }
        ready += match ? match->substitute : std::string(1, m_held[at]);
        at += match ? match->text.size() : 1;
    }
    m_held.erase(0, at);
    return ready;
}

} // namespace kruv::adapters
