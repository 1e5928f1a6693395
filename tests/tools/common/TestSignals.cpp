// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/TestSignals.h"

#include "common/LittleEndian.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace kruv::tools::test {

namespace {

class Generator
{
public:
    Generator(Signal signal, unsigned bits)
        : m_signal(signal)
        , m_largest((1 << (bits - 1)) - 1)
    {
    }

    std::int32_t at(std::size_t i, unsigned channel)
    {
        const double t = static_cast<double>(i);
        const double c = channel + 1.0;
        switch (m_signal) {
        case Signal::Silence:
            return 0;
        case Signal::Noise:
            return noise(0);
        case Signal::Square:
            return i / 50 % 2 ? m_largest : -m_largest - 1;
        case Signal::Alternating:
            return (i + channel) % 2 ? m_largest : -m_largest - 1;
        case Signal::SameChannels:
            return scaled(0.4 * std::sin(t * 0.05));
        case Signal::Impulses:
            return i % 997 == 0 ? m_largest : 0;
        case Signal::Sweep:
            return scaled(std::sin(1e-5 * t * t * c));
        case Signal::Music:
            return scaled(0.3 * std::sin(t * 0.03 * c) + 0.2 * std::sin(t * 0.11) +
                          0.002 * m_normal(m_random));
        case Signal::LowZeros:
            return noise(3);
        case Signal::Mixed:
            return i / 700 % 3 == 0 ? 0 : i / 700 % 3 == 1 ? noise(2) : noise(0) / (m_largest / 20);
        }
        return 0;
    }

private:
    std::int32_t noise(unsigned lowZeros)
    {
        const auto value = static_cast<std::int32_t>(m_random() % (2 * static_cast<unsigned>(m_largest) + 2));
        return (value - m_largest - 1) >> lowZeros << lowZeros;
    }
    std::int32_t scaled(double value) const
    {
        return static_cast<std::int32_t>(std::lround(value * m_largest));
    }

    Signal m_signal;
    std::int32_t m_largest;
    std::mt19937 m_random{1};
    std::normal_distribution<double> m_normal;
};

} // namespace

Bytes pcm(Signal signal, const WavFormat &format, std::size_t frames)
{
    Generator generator(signal, format.bitsPerSample);
    Bytes bytes;
    bytes.reserve(frames * format.bytesPerFrame());
    for (std::size_t i = 0; i < frames; ++i) {
        for (unsigned c = 0; c < format.channels; ++c) {
            const std::int32_t value = generator.at(i, c) + (format.bitsPerSample == 8 ? 128 : 0);
            for (unsigned b = 0; b < format.bytesPerSample(); ++b) {
                bytes.push_back(static_cast<std::uint8_t>(value >> (8 * b)));
            }
        }
    }
    return bytes;
}

Bytes everySignal(const WavFormat &format, std::size_t framesEach)
{
    Bytes bytes;
    for (const Signal signal : allSignals) {
        bytes = std::move(bytes) + pcm(signal, format, framesEach);
    }
    return bytes;
}

Bytes wav(const WavFormat &format, const Bytes &audio, const Bytes &before, const Bytes &after)
{
    const auto header = format.header(audio.size());
    const Bytes pad(audio.size() % 2);
    Bytes file = Bytes(header.begin(), header.begin() + 36) + before +
                 Bytes(header.begin() + 36, header.end()) + audio + pad + after;
    writeLe32(&file[4], static_cast<std::uint32_t>(file.size() - 8));
    return file;
}

Bytes wavWithSpeakers(const WavFormat &format, const Bytes &audio)
{
    return format.headerWithSpeakers(audio.size()) + audio + Bytes(audio.size() % 2);
}

Bytes wave64(const WavFormat &format, const Bytes &audio, const Bytes &before)
{
    const Bytes ours = fromHex("f3acd3118cd100c04f8edb8a");
    const auto named = [&](const std::string &id, const Bytes &content) {
        Bytes bytes = Bytes(id.begin(), id.end()) + ours + Bytes(8) + content;
        writeLe32(&bytes[16], static_cast<std::uint32_t>(bytes.size()));
        bytes.resize((bytes.size() + 7) / 8 * 8);
        return bytes;
    };
    const auto header = format.header(0);
    return fromHex("726966662e91cf11a5d628db04c10000") + Bytes(8) + fromHex("77617665") + ours + before +
           named("fmt ", Bytes(header.begin() + 20, header.end() - 8)) + named("data", audio);
}

Bytes chunk(const std::string &id, std::size_t size)
{
    Bytes bytes(id.begin(), id.end());
    bytes.resize(8 + size + size % 2, 'x');
    writeLe32(&bytes[4], static_cast<std::uint32_t>(size));
    return bytes;
}

Bytes song(std::size_t frames)
{
    const WavFormat format;
    return wav(format, pcm(Signal::Music, format, frames));
}

Bytes fromHex(const std::string &hex)
{
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

Bytes operator+(Bytes left, const Bytes &right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

} // namespace kruv::tools::test
