// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <optional>

namespace kruv {

/// The name for the numeric genre code of an MP4 file, which is the ID3v1 code plus one. Nothing for a code
/// without a name; code 0 has the empty one.
std::optional<QString> mp4GenreText(quint16 code);

} // namespace kruv
