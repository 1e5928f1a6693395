// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/PcmDigest.h"

#include "audio/AudioError.h"

#include <QCoreApplication>

#include <bit>

namespace kruv {

Digest audioMd5()
{
    Digest digest(Digest::Algorithm::MD5);
    if (!digest.isAvailable()) {
        throw AudioError(
            QCoreApplication::translate("kruv::PcmDigest", "MD5 is switched off on this system."));
    }
    return digest;
}

PcmDigest::PcmDigest(unsigned bits)
    : m_bits(bits)
{
}

template <typename Sample> void PcmDigest::addShifted(std::span<const Sample> samples)
{
    const unsigned shift = 8 * sizeof(Sample) - m_bits;
    const std::size_t width = (m_bits + 7) / 8;
    if (width == sizeof(Sample) && shift == 0 && std::endian::native == std::endian::little) {
        m_hash.add(std::as_bytes(samples));
        return;
    }
    m_bytes.resize(samples.size() * width);
    char *target = m_bytes.data();
    for (const Sample sample : samples) {
        const auto bits = static_cast<std::uint32_t>(sample >> shift);
        for (std::size_t i = 0; i < width; ++i) {
            *target++ = static_cast<char>(bits >> (8 * i));
        }
    }
    m_hash.add(std::as_bytes(std::span(m_bytes)));
}

void PcmDigest::add(std::span<const std::int16_t> samples)
{
    addShifted(samples);
}

void PcmDigest::add(std::span<const std::int32_t> samples)
{
    addShifted(samples);
}

} // namespace kruv
