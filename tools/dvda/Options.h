// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/ToolError.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kruv::dvda {

/// Wrong usage of the command line.
class UsageError : public tools::ToolError
{
public:
    using tools::ToolError::ToolError;
};

enum class Action {
    Author,
    ShowHelp,
    ShowVersion,
};

struct Options
{
    Action action = Action::Author;
    std::string logFile; ///< empty = none
    std::string outputFolder;
    std::vector<std::string> files;          ///< the tracks of the group, in order
    bool tolerant = false;                   ///< take what is there of files that are shorter than they state
    bool videoFolder = true;                 ///< make an empty VIDEO_TS
    std::optional<std::uint32_t> infoSector; ///< where the image will hold AUDIO_PP.IFO
};

/// Arguments without the program's name in; throws UsageError.
Options parseOptions(const std::vector<std::string> &arguments);

extern const char *const usage;

} // namespace kruv::dvda
