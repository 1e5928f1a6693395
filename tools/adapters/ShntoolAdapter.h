// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "StandIn.h"

#include <array>
#include <functional>

namespace kruv::adapters {

/// A source that shntool does not take as it is.
struct ShntoolStandIn
{
    std::size_t argument; // its place in the plan's arguments
    std::string source;
    SourceKind kind;
    bool headerOnly;
};

/// An output that the caller looks for.
struct ShntoolOutput
{
    // What shntool may call it: it removes an extension only if that is the exact usual one of the source's
    // format.
    std::array<std::string, 2> possibleNames;
    std::string wantedName;
};

/// What a call of `shntool` comes to.
struct ShntoolPlan
{
    Arguments arguments;            // for the tool
    std::size_t folderArgument = 0; // place of the output folder in them; 0: nothing is written
    std::string folder;             // where the outputs belong
    std::string exactFile;          // where the only output belongs, instead; may be empty
    Arguments sources;              // as they were given
    std::string encoder;            // the program that encodes them; empty where it is this one
    std::vector<ShntoolOutput> outputs;
    Arguments heardSources;  // those whose decoders' complaints count
    std::string takenPrefix; // outputs that can't be named beforehand begin with this ...
    std::string takenSuffix; // ... and end with this
    std::vector<ShntoolStandIn> standIns;
    std::size_t pointsArgument = 0; // place of the split-point file; 0: none
    bool replace = false;           // existing outputs are overwritten
    bool oneResult = false;         // all outputs or none
    std::string error;              // not empty: don't run, say this

    bool runsAlone() const { return folderArgument == 0 && standIns.empty() && heardSources.empty(); }
};

/// What the planning asks the file system.
struct ShntoolSurroundings
{
    std::function<bool(const std::string &)> exists;
    std::function<SourceKind(const std::string &)> kind;
    std::string helper; // how a child of shntool calls this program; holds no blank
};

/// Works out the call. Outputs are written into a private folder and moved to their place when the tool has
/// ended: under the name that the caller expects, and never half-written.
ShntoolPlan planShntool(const Arguments &arguments, const ShntoolSurroundings &surroundings);

} // namespace kruv::adapters
