// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Level.h"

#include <optional>
#include <span>
#include <string>

namespace kruv::mac {

/// What the arguments ask for.
struct CommandLine
{
    enum class Mode { Compress, Decompress, Verify };

    Mode mode = Mode::Verify;
    std::string input;
    std::string output;           ///< empty when verifying
    const Level *level = nullptr; ///< when compressing

    /// Understands INPUT OUTPUT -cLEVEL, INPUT OUTPUT -d, INPUT -v and -v INPUT; nothing for anything else.
    /// Letters of modes may be capital. Files are known by their place, so their names may start with a dash.
    static std::optional<CommandLine> parse(std::span<const std::string> arguments);
    static std::string usage();
};

} // namespace kruv::mac
