// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "ScratchFolder.h"

#include <map>

namespace kruv::adapters {

/// What the decoders behind shntool tell of its sources. shntool asks none of them how it ended, so they
/// write it into a file, which this names to them in the environment.
class SoundReport
{
public:
    /// From here on children find the file.
    SoundReport();

    /// False where there is no place for it.
    explicit operator bool() const { return static_cast<bool>(m_folder); }
    /// Reads what the decoders wrote.
    void read();
    /// Whether a decoder got to the end of `file`, and told.
    bool knows(const std::string &file) const;
    /// What is wrong with `file`, a clause; empty where nothing is.
    std::string complaint(const std::string &file) const;

    /// In a decoder: notes what is wrong with `file`, or with an empty `complaint` that it is sound.
    static void note(const std::string &file, const std::string &complaint);

private:
    ScratchFolder m_folder;
    std::map<std::string, std::string> m_complaints; // by real path
};

} // namespace kruv::adapters
