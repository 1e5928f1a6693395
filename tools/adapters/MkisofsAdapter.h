// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"

#include <functional>

namespace kruv::adapters {

/// What a call of `mkisofs` comes to.
struct MkisofsPlan
{
    bool dvdAudio = false; // false: run the tool with `arguments` as they are
    Arguments arguments;   // with empty places at `sortFileArgument` and `imageArgument`, to be filled in
    std::size_t sortFileArgument = 0;
    std::size_t imageArgument = 0; // 0: the image goes to standard output
    std::string image;             // where the image belongs
    std::string tree;              // the DVD-Audio tree; the tool has to run inside it
    std::string error;             // not empty: don't run, say this
};

/// Works out the call. The installed tool has no DVD-Audio mode, but it writes the same image as an ISO 9660
/// + UDF bridge when a sort file puts the files of AUDIO_TS into their order on the disc. The tool runs
/// inside the tree, so that no path with a line break or a doubled slash gets into the sort file, where it
/// would not match. `isTree` tells whether a folder holds AUDIO_TS/AUDIO_TS.IFO.
MkisofsPlan planMkisofs(const Arguments &arguments, const std::function<bool(const std::string &)> &isTree);

/// The names of AUDIO_TS that `names` holds, in their order on the disc.
std::vector<std::string> dvdAudioOrder(const std::vector<std::string> &names);

/// Sort file: one line a file, its path as seen from the tree and a weight that falls from one to the next.
std::string sortFileText(const std::vector<std::string> &orderedNames);

} // namespace kruv::adapters
