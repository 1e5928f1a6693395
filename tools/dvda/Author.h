// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Disc.h"
#include "Options.h"

#include <string>
#include <vector>

namespace kruv::dvda {

class AudioTree;
class Log;
class PackWriter;
class TrackSource;

/// Makes the tree of one disc. All files are looked at first, so that most of what could go wrong does before
/// anything is written.
class Author
{
public:
    Author(const Options &options, Log &log);

    /// Throws ToolError; then no tree is left.
    void run();

private:
    void inspect();
    void checkCapacity() const;
    void checkRoom() const;
    void writeTracks(AudioTree &tree);
    Track writeTrack(std::size_t index, PackWriter &writer);

    const Options &m_options;
    Log &m_log;
    std::vector<LpcmFormat> m_formats; ///< one a file
    std::uint64_t m_estimatedSectors = 0;
    Disc m_disc;
};

/// The whole program: arguments without the program's name in, exit status out (2 = wrong usage). Throws
/// ToolError.
int run(const std::vector<std::string> &arguments);

} // namespace kruv::dvda
