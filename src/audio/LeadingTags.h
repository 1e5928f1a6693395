// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

namespace kruv {

class FileHead;

namespace LeadingTags {

/// Where the file begins behind the ID3v2 and APEv2 tags that stand before everything else, in bytes.
/// https://id3.org/id3v2.4.0-structure
std::int64_t end(FileHead &file);

} // namespace LeadingTags
} // namespace kruv
