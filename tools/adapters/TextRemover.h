// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kruv::adapters {

/// Takes given texts out of a stream that comes in pieces cut anywhere. Only the shortest possible tail is
/// held back: what might be the start of one of the texts.
class TextRemover
{
public:
    explicit TextRemover(std::vector<std::string> texts);

    /// What can be passed on after this piece.
    std::string feed(std::string_view piece);

    /// What was held back, at the end of the stream.
    std::string flush();

private:
    std::vector<std::string> m_texts;
    std::string m_held;
};

} // namespace kruv::adapters
