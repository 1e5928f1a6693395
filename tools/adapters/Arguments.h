// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kruv::adapters {

/// A command line without the program's own name; file names are bytes, in no particular encoding.
using Arguments = std::vector<std::string>;

/// Last component of `path`; the whole of it when it holds no "/".
inline std::string_view baseName(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

/// Folder of `path`: "." when it holds no "/", "/" for a file of the root.
inline std::string folderOf(std::string_view path)
{
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos) {
        return ".";
    }
    return std::string(slash == 0 ? "/" : path.substr(0, slash));
}

/// `name` less its last extension; a leading dot starts no extension.
inline std::string_view stemOf(std::string_view name)
{
    const auto dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot);
}

/// A relative name in a form that no tool takes for an option or a command ("./-lead.wav").
inline std::string unmistakableName(const std::string &name)
{
    return name.empty() || name.front() == '/' ? name : "./" + name;
}

} // namespace kruv::adapters
