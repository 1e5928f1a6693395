// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>

namespace kruv::adapters {

/// Writes a WAV stream of integer PCM into `file` as AIFF: `start` is its beginning, header and a little
/// audio, `input` the descriptor that gives the rest, which is read to its end. False, with errno set, where
/// the stream is something else, ends before the audio it announces, or can't be written whole.
bool storeAiff(const std::string &start, int input, const std::string &file);

} // namespace kruv::adapters
