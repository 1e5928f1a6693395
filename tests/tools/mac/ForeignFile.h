// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MacTestSupport.h"
#include "mac/Arithmetic.h"

namespace kruv::mac::test {

/// Makes files as other encoders did: of older versions, or with some arithmetic in 64 bits. 16 or 24-bit
/// stereo, one frame, no stored WAV header.
struct ForeignFile
{
    uint16_t version = 3990;
    uint16_t level = 2000;
    Arithmetic arithmetic;
    /// Before version 3.98: the optional fields of the header.
    bool withPeakLevel = false;
    bool withSeekElements = false;

    Bytes make(Format format, const Bytes &audio) const;

private:
    Bytes codeFrame(Format format, const Bytes &audio) const;
    Bytes oldHeader(Format format, uint32_t blocks) const;
    Bytes currentHeader(Format format, uint32_t blocks, std::size_t frameDataSize) const;
};

} // namespace kruv::mac::test
