// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "TextRemover.h"

#include <utility>

namespace kruv::adapters {

TextRemover::TextRemover(std::vector<std::string> texts)
    : m_texts(std::move(texts))
{
    std::erase(m_texts, std::string());
}

std::string TextRemover::feed(std::string_view piece)
{
    m_held += piece;
    std::string ready;
    std::size_t at = 0;
    while (at < m_held.size()) {
        const std::string_view rest = std::string_view(m_held).substr(at);
        std::size_t matched = 0;
        bool undecided = false;
        for (const auto &text : m_texts) {
            if (rest.starts_with(text)) {
                matched = std::max(matched, text.size());
            } else if (std::string_view(text).starts_with(rest)) {
                undecided = true;
            }
        }
        if (undecided) {
            break; // a longer piece may complete it
        }
        if (matched == 0) {
            ready += m_held[at];
            matched = 1;
        }
        at += matched;
    }
    m_held.erase(0, at);
    return ready;
}

std::string TextRemover::flush()
{
    return std::exchange(m_held, std::string());
}

} // namespace kruv::adapters
