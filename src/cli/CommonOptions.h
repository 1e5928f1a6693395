// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>
#include <vector>

namespace kruv {

/// Flags that the converting and verifying commands share, as given.
struct CommonOptions
{
    std::vector<std::string> paths;
    std::string output;
    /// File that a list or a sheet is saved in.
    std::string save;
    /// File that a command reads besides the paths: split points, a cue sheet.
    std::string sideFile;
    /// The flag that names it.
    const char *sideFileFlag = nullptr;
    /// Answer to a prompt for one line of text.
    std::string text;
    bool besideSource = false;
    /// The output folder gets the tree below each folder that was given.
    bool mirror = false;
    /// Pattern of the outputs' names; empty: as their sources.
    std::string name;
    /// Names that other systems take, too.
    bool portableNames = false;
    /// Kinds of files beside the audio that go along; empty: none.
    std::string copyOthers;
    bool deleteOriginals = false;
    /// Originals whose outputs have other samples on purpose may go, too.
    bool deleteChanged = false;
    /// Originals may go although their outputs can't hold all that is in them.
    bool acceptLosses = false;
    bool prove = false;
    bool overwrite = false;
    bool skipExisting = false;
    bool keepBoth = false;
    /// What an earlier run made of the same sources in the same way is left alone.
    bool skipDone = false;
    /// Nothing is done; what would be is told.
    bool dryRun = false;
    /// What is older than its source is made anew.
    bool update = false;
    /// Disks that seem to be too small stop nothing.
    bool ignoreSpace = false;
    /// File that the plan is written into, instead of being carried out.
    std::string savePlan;
    bool onlyPlans() const { return dryRun || !savePlan.empty(); }
    /// The window that is open does the jobs.
    bool detach = false;
    bool yes = false;
    /// Lossy files may become lossless ones.
    bool fromLossy = false;
    /// A command that works on DVD-Audio reads the formats of its files.
    bool readFormats = true;
    /// Jobs at once; 0 means the preference.
    int jobs = 0;
    /// A TimeSpan after which no further job begins; empty: never.
    std::string stopAfter;
    /// Others have the processors and the disks first.
    bool nice = false;
    bool noNice = false;
    bool quiet = false;
    bool json = false;
    bool noColor = false;
};

} // namespace kruv
