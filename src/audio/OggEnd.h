// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

namespace kruv {

class FileDescriptor;

namespace OggEnd {

/// Whether the last page before `end` is whole and says that it is the last: what is missing behind a page
/// leaves no other trace.
bool isThere(const FileDescriptor &file, std::int64_t end);

} // namespace OggEnd

} // namespace kruv
