// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "TextReplacer.h"

#include <utility>

namespace kruv::adapters {

TextReplacer::TextReplacer(std::vector<Replacement> replacements)
    : m_replacements(std::move(replacements))
{
    std::erase_if(m_replacements, [](const auto &each) { return each.text.empty(); });
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

std::string TextReplacer::replaceHeld(bool atEnd)
{
    std::string ready;
    std::size_t at = 0;
    while (at < m_held.size()) {
        const std::string_view rest = std::string_view(m_held).substr(at);
        const Replacement *match = nullptr;
        bool undecided = false;
        for (const auto &each : m_replacements) {
            if (rest.starts_with(each.text)) {
                match = match && match->text.size() >= each.text.size() ? match : &each;
            } else if (std::string_view(each.text).starts_with(rest)) {
                undecided = !atEnd; // a longer piece may complete it
            }
        }
        if (undecided) {
            break;
        }
        ready += match ? match->substitute : std::string(1, m_held[at]);
        at += match ? match->text.size() : 1;
    }
    m_held.erase(0, at);
    return ready;
}

} // namespace kruv::adapters
