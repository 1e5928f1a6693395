// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace kruv::adapters {

/// File name of this program in a resources folder; the tools' names there are links to it.
inline constexpr std::string_view programName = "kruv-adapters";

/// Finds the real tool behind a given name.
class ToolFinder
{
public:
    /// `searchPath` as in PATH (empty: the system's usual folders); `ownFolder` holds this program and may
    /// hold tools of our own that are no adapters.
    ToolFinder(std::string searchPath, std::string ownFolder);

    /// Full path of the tool, or of a well-known equivalent of it (genisoimage for mkisofs); empty when
    /// missing. Whatever resolves to a program called like this one is passed over, so two resources folders
    /// in PATH can't call each other for ever. Empty PATH elements are passed over too: the music folder is
    /// no place to run programs from.
    std::string find(std::string_view tool) const;

    /// PATH for children: without empty elements, our own folder last.
    std::string childSearchPath() const;

    const std::string &ownFolder() const { return m_ownFolder; }

    /// What to tell a person who lacks the tool, with the Debian package that brings it.
    static std::string missingText(std::string_view tool);

private:
    std::string findExactly(std::string_view name) const;

    std::string m_searchPath;
    std::string m_ownFolder;
};

} // namespace kruv::adapters
