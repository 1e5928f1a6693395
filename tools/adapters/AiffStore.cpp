// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AiffStore.h"

#include "File.h"
#include "WavHeader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace kruv::adapters {

namespace {

struct Pcm
{
    unsigned channels = 0;
    unsigned rate = 0; // frames per second
    unsigned bits = 0; // of a sample, which lies at the high end of whole bytes
    unsigned frameSize = 0;
    std::uint64_t size = 0; // bytes of audio
};

std::uint64_t littleEndian(std::string_view bytes, std::size_t at, int size)
{
    std::uint64_t value = 0;
    for (int i = size; i-- > 0;) {
        value = value << 8U | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    }
    return value;
}

std::optional<Pcm> pcmOf(std::string_view start, const WavHeader &header)
{
    constexpr unsigned plain = 1;
    if (littleEndian(start, header.format, 2) != plain && !isExtensiblePcm(start)) {
        return std::nullopt;
    }
    const Pcm pcm{static_cast<unsigned>(littleEndian(start, header.format + 2, 2)), header.rate,
                  static_cast<unsigned>(littleEndian(start, header.format + 14, 2)), header.frameSize,
                  littleEndian(start, header.data - 4, 4)};
    constexpr std::uint64_t largest = 0xFFFFFFFF - 64; // the sizes of AIFF have 32 bits
    const bool isSound = pcm.channels > 0 && pcm.bits > 0 && pcm.bits <= 32 &&
                         pcm.frameSize == (pcm.bits + 7) / 8 * pcm.channels && pcm.size <= largest &&
                         pcm.size % pcm.frameSize == 0;
    return isSound ? std::optional(pcm) : std::nullopt;
}

void appendNumber(std::string &text, std::uint64_t value, int size)
{
    for (int i = size; i-- > 0;) {
        text.push_back(static_cast<char>(value >> static_cast<unsigned>(8 * i) & 0xFFU));
    }
}

std::string aiffHeader(const Pcm &pcm)
{
    std::string header("FORM");
    appendNumber(header, 4 + 26 + 16 + pcm.size + pcm.size % 2, 4);
    header += "AIFFCOMM";
    appendNumber(header, 18, 4);
    appendNumber(header, pcm.channels, 2);
    appendNumber(header, pcm.size / pcm.frameSize, 4);
    appendNumber(header, pcm.bits, 2);
    // The rate as an 80-bit extended number of the IEEE.
    const int shift = std::countl_zero(std::uint64_t{pcm.rate});
    appendNumber(header, pcm.rate == 0 ? 0 : static_cast<std::uint64_t>(16383 + 63 - shift), 2);
    appendNumber(header, pcm.rate == 0 ? 0 : std::uint64_t{pcm.rate} << static_cast<unsigned>(shift), 8);
    header += "SSND";
    appendNumber(header, 8 + pcm.size, 4);
    appendNumber(header, 0, 8); // offset and block size
    return header;
}

// From low byte first to high byte first; only WAV's bytes are unsigned.
void turnSamples(std::string &audio, std::size_t sampleSize)
{
    if (sampleSize == 1) {
        std::transform(audio.begin(), audio.end(), audio.begin(),
                       [](char sample) { return static_cast<char>(sample ^ '\x80'); });
        return;
    }
    for (auto sample = audio.begin(); sample != audio.end();
         sample += static_cast<std::ptrdiff_t>(sampleSize)) {
        std::reverse(sample, sample + static_cast<std::ptrdiff_t>(sampleSize));
    }
}

/// The audio of the stream, piece by piece.
class Audio
{
public:
    Audio(std::string first, int input, const Pcm &pcm)
        : m_waiting(std::move(first))
        , m_input(input)
        , m_frameSize(pcm.frameSize)
        , m_left(pcm.size)
    {
    }

    // Whole frames; empty at the end of the audio or of the stream.
    std::string next()
    {
        while (m_left > 0 && m_waiting.size() < m_frameSize && readMore()) {
        }
        const auto size = std::min<std::uint64_t>(m_left, m_waiting.size() / m_frameSize * m_frameSize);
        std::string frames = m_waiting.substr(0, size);
        m_waiting.erase(0, size);
        m_left -= size;
        return frames;
    }

    bool isWhole() const { return m_left == 0; }

    // Chunks behind the audio: a writer whose reader goes away ends in failure.
    void skipRest()
    {
        while (readMore()) {
            m_waiting.clear();
        }
    }

private:
    bool readMore()
    {
        std::array<char, 65536> buffer;
        ssize_t count = -1;
        do {
            count = read(m_input, buffer.data(), buffer.size());
        } while (count < 0 && errno == EINTR);
        m_waiting.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        return count > 0;
    }

    std::string m_waiting;
    const int m_input;
    const std::size_t m_frameSize;
    std::uint64_t m_left;
};

} // namespace

bool storeAiff(const std::string &start, int input, const std::string &file)
{
    const auto header = WavHeader::parse(start);
    const auto pcm = header ? pcmOf(start, *header) : std::nullopt;
    if (!pcm) {
        errno = EINVAL;
        return false;
    }
    constexpr mode_t usual = 0666;
    const File target(open(file.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, usual));
    if (!target || !writeAll(target.descriptor(), aiffHeader(*pcm))) {
        return false;
    }
    Audio audio(start.substr(header->data), input, *pcm);
    for (std::string frames = audio.next(); !frames.empty(); frames = audio.next()) {
        turnSamples(frames, pcm->frameSize / pcm->channels);
        if (!writeAll(target.descriptor(), frames)) {
            return false;
        }
    }
    if (!audio.isWhole()) {
        errno = ENODATA;
        return false;
    }
    audio.skipRest();
    return pcm->size % 2 == 0 || writeAll(target.descriptor(), std::string_view("\0", 1));
}

} // namespace kruv::adapters
