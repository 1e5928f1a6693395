// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/Digest.h"

#include <QByteArray>

#include <cstdint>
#include <span>
#include <vector>

namespace kruv {

/// Throws AudioError where the system forbids MD5.
Digest audioMd5();

/// The MD5 that FLAC keeps of its audio: interleaved signed samples, low byte first, in as few whole bytes as
/// their depth needs and at the low end of them.
class PcmDigest
{
public:
    /// `bits` per sample.
    explicit PcmDigest(unsigned bits);

    /// Samples at the high end of their 2 or 4 bytes, in this machine's order.
    void add(std::span<const std::int16_t> samples);
    void add(std::span<const std::int32_t> samples);
    /// Nothing may be added afterwards.
    const QByteArray &result() { return m_hash.result(); }

private:
    template <typename Sample> void addShifted(std::span<const Sample> samples);

    const unsigned m_bits;
    Digest m_hash = audioMd5();
    std::vector<char> m_bytes;
};

} // namespace kruv
