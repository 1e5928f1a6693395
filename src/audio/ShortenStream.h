// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <cstdint>

namespace kruv {

/// What FFmpeg's reader does not tell of a Shorten file, from our own decoder. `start` is where the stream
/// begins in the file.
namespace ShortenStream {

/// The length that the header of the WAV inside states; 0 where there is none that tells.
std::int64_t statedFrames(const QString &path, std::int64_t start);
/// Decodes to the end once more, because FFmpeg's decoder takes zeros for what is missing there. AudioError
/// where the stream is damaged or cut short.
void checkEnd(const QString &path, std::int64_t start);

} // namespace ShortenStream

} // namespace kruv
