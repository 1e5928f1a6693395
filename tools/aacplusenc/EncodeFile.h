// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kruv::aacplusenc {

/// Encodes the WAV or AIFF file @p input ("-" is standard input) to HE-AAC of @p kilobits kbit/s in the
/// MPEG-4 file @p output, which appears only when it is complete. Prints pieces such as "[ 42%]" to standard
/// error. Throws ToolError.
void encodeFile(const std::string &input, const std::string &output, std::uint32_t kilobits);

/// The whole program: arguments without the program's name in, exit status out. Throws ToolError.
int run(const std::vector<std::string> &arguments);

} // namespace kruv::aacplusenc
