// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

namespace kruv {

/// Four characters as one number, first character highest.
constexpr std::uint32_t fourCharCode(const char (&text)[5])
{
    std::uint32_t code = 0;
    for (int i = 0; i < 4; ++i) {
        code = code << 8 | static_cast<unsigned char>(text[i]);
    }
    return code;
}

/// What the samples of a file are coded in.
enum class FormatType : std::uint32_t {
    Other = 0, ///< readable, but none of those below
    AppleLossless = fourCharCode("alac"),
    Aac = fourCharCode("aac "),
    LinearPcm = fourCharCode("lpcm"),
};

/// What kind of file they lie in.
enum class FileType : std::uint32_t {
    M4af = fourCharCode("m4af"), ///< MPEG-4 audio
    Wave = fourCharCode("WAVE"),
    Aiff = fourCharCode("AIFF"),
};

/// The stream description of a file, or of the linear PCM that it is read and written in.
struct AudioStreamFormat
{
    // Flags of linear PCM.
    static constexpr std::uint32_t isFloat = 1;
    static constexpr std::uint32_t isBigEndian = 2;
    static constexpr std::uint32_t isSignedInteger = 4;
    static constexpr std::uint32_t isPacked = 8;

    FormatType formatType = FormatType::Other;
    /// Of linear PCM and, as far as isFloat goes, of other codecs: see above. Of Apple Lossless: the source's
    /// width, 1 to 4 for 16, 20, 24 and 32 bits.
    std::uint32_t formatFlags = 0;
    std::uint32_t sampleRate = 0; ///< Hz
    std::uint32_t channels = 0;
    std::uint32_t bitsPerChannel = 0; ///< as the file states them, 20 for example; 0 for lossy codecs
    std::uint32_t bytesPerFrame = 0;  ///< 0 for compressed formats
    std::uint32_t channelMask = 0;    ///< speakers as in WAVEFORMATEXTENSIBLE; 0 = not told

    /// Of linear PCM, and of a codec that holds floating-point samples losslessly.
    bool isFloatingPoint() const
    {
        return formatType != FormatType::AppleLossless && (formatFlags & isFloat) != 0;
    }
    /// The width that samples of this format are converted in: 8, 16, 24 or 32 bits. Depths between them go
    /// up to the next, their bits at the high end and zeros below; codecs without a depth of their own
    /// get 16.
    std::uint32_t sampleWidth() const;
    /// Integer linear PCM with this format's rate, channels and width.
    AudioStreamFormat clientFormat() const;
    /// What a file of `fileType` made of this format holds, with the rate that the codec wants.
    AudioStreamFormat outputFormat(FormatType formatType, FileType fileType) const;
};

} // namespace kruv
