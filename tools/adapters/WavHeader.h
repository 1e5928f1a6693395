// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kruv::adapters {

/// Where the parts of a RIFF WAVE header lie, as byte offsets from the start of the file.
struct WavHeader
{
    std::size_t format = 0;     // data of the "fmt " chunk
    std::size_t formatSize = 0; // its size in bytes
    std::size_t data = 0;       // first byte of audio
    unsigned rate = 0;          // frames per second
    unsigned frameSize = 0;     // bytes
    std::uint32_t dataSize = 0; // of the audio, as it is stated

    /// False where a writer left the length open, as on a pipe: 0, or one of the values that stand for "as
    /// long as it gets".
    bool statesLength() const;
    /// The header in `start`, with another length of the audio and no other chunk behind it.
    std::string withDataSize(std::string start, std::uint32_t size) const;

    /// Finds them in the first bytes of a file; nothing when these are no WAV, or end before the audio
    /// begins.
    static std::optional<WavHeader> parse(std::string_view start);
};

/// Whether a WAV beginning with `start` has the extensible form (tag 0xFFFE) with integer PCM inside.
bool isExtensiblePcm(std::string_view start);

/// The same header with the plain PCM tag in place of the extensible one; no size and no other byte changes.
/// Anything else comes back as it is.
std::string plainHeader(std::string start);

/// The same header in the extensible form, with the usual speakers for the number of channels, when a plain
/// one stands there with more than two channels: encoders would not know the speakers otherwise. Anything
/// else comes back as it is.
std::string extensibleHeader(std::string start);

} // namespace kruv::adapters
