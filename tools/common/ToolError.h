// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>

namespace kruv::tools {

/// Anything that ends a tool with a message and a non-zero status: bad input, a failed read or write, wrong
/// usage. The message is a whole sentence part without the program's name and without a final full stop.
class ToolError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace kruv::tools
