// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"

#include <functional>
#include <optional>

namespace kruv::adapters {

/// What is particular about one of shntool's modes.
struct ShntoolMode
{
    std::string_view name;
    std::string_view valueOptions = {}; // its own options that take a value, besides the ones all modes have
    std::string_view postfix =
        {}; // behind the source's name in the output's, when it writes one output a source
    bool writes = false;
    bool oneResult = false;   // its outputs belong together: all of them or none
    bool sorts = false;       // puts the sources into another order unless told not to
    bool headersOnly = false; // never looks at the audio itself
};

/// A parsed shntool command line.
struct ShntoolCommand
{
    struct Option
    {
        char letter;
        bool hasValue;
        std::string value;
    };

    const ShntoolMode *mode = nullptr;
    std::vector<Option> options; // in their order
    Arguments files;

    /// Value of the last option `letter`; null when absent.
    const std::string *value(char letter) const;
    void setValue(char letter, std::string value);
    void remove(char letter);

    /// Nothing for a mode that needs no adapting, or a line that shntool itself would refuse. A word that
    /// starts with a dash is a source all the same when `exists` says so, or when it is a bare name with an
    /// audio file's extension.
    static std::optional<ShntoolCommand> parse(const Arguments &arguments,
                                               const std::function<bool(const std::string &)> &exists);
};

} // namespace kruv::adapters
