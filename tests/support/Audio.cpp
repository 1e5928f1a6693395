// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Audio.h"

#include "support/Files.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <numbers>
#include <random>
#include <stdexcept>

namespace kruv::test {

namespace {

enum class ByteOrder { Little, Big };

constexpr unsigned pcmTag = 1;
constexpr unsigned extensibleTag = 0xFFFE;
constexpr int exponentBias = 16383;

void appendInteger(QByteArray &bytes, std::uint64_t value, unsigned size, ByteOrder order)
{
    for (unsigned i = 0; i < size; ++i) {
        const unsigned shift = 8 * (order == ByteOrder::Little ? i : size - 1 - i);
        bytes.append(static_cast<char>(value >> shift & 0xFFU));
    }
}

std::uint64_t integerAt(const QByteArray &bytes, qsizetype position, unsigned size, ByteOrder order)
{
    if (position < 0 || position + static_cast<qsizetype>(size) > bytes.size()) {
        throw std::runtime_error("the file ends too early");
    }
    std::uint64_t value = 0;
    for (unsigned i = 0; i < size; ++i) {
        const unsigned shift = 8 * (order == ByteOrder::Little ? i : size - 1 - i);
        value |= std::uint64_t{static_cast<unsigned char>(bytes[position + static_cast<qsizetype>(i)])}
                 << shift;
    }
    return value;
}

void appendChunk(QByteArray &bytes, const char *id, const QByteArray &content, ByteOrder order)
{
    bytes.append(id, 4);
    appendInteger(bytes, static_cast<std::uint64_t>(content.size()), 4, order);
    bytes.append(content);
    if (content.size() % 2 != 0) {
        bytes.append('\0');
    }
}

/// Content of the first chunk called `id`.
QByteArray chunk(const QByteArray &bytes, const char *id, ByteOrder order)
{
    qsizetype position = 12;
    while (position + 8 <= bytes.size()) {
        const auto size = static_cast<qsizetype>(integerAt(bytes, position + 4, 4, order));
        if (std::memcmp(bytes.constData() + position, id, 4) == 0) {
            return bytes.mid(position + 8, size);
        }
        position += 8 + size + size % 2;
    }
    throw std::runtime_error(std::string("no chunk ") + id);
}

// Eight bits are unsigned in WAVE files and signed in AIFF files.
std::int64_t zeroLevel(unsigned bitsPerSample, ByteOrder order)
{
    return bitsPerSample == 8 && order == ByteOrder::Little ? 128 : 0;
}

QByteArray pcmBytes(const Audio &audio, ByteOrder order)
{
    const unsigned size = audio.bitsPerSample / 8;
    QByteArray bytes;
    bytes.reserve(static_cast<qsizetype>(audio.samples.size()) * size);
    for (const std::int32_t sample : audio.samples) {
        appendInteger(bytes, static_cast<std::uint64_t>(sample + zeroLevel(audio.bitsPerSample, order)), size,
                      order);
    }
    return bytes;
}

std::vector<std::int32_t> samplesIn(const QByteArray &pcm, unsigned bitsPerSample, ByteOrder order)
{
    const unsigned size = bitsPerSample / 8;
    if (size < 1 || size > 4) {
        throw std::runtime_error("unexpected sample size");
    }
    std::vector<std::int32_t> samples(static_cast<std::size_t>(pcm.size()) / size);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        auto value = static_cast<std::int64_t>(integerAt(pcm, static_cast<qsizetype>(i) * size, size, order));
        value -= zeroLevel(bitsPerSample, order);
        const unsigned unused = 32 - bitsPerSample;
        samples[i] = static_cast<std::int32_t>(static_cast<std::uint32_t>(value) << unused) >> unused;
    }
    return samples;
}

} // namespace

Audio makeAudio(const AudioShape &shape)
{
    Audio audio{shape.sampleRate, shape.channels, shape.bitsPerSample, {}};
    audio.samples.reserve(shape.frames * shape.channels);
    std::mt19937 random(shape.seed);
    const auto top = static_cast<std::int32_t>((std::int64_t{1} << (shape.bitsPerSample - 1)) - 1);
    const double step = 440.0 * 2.0 * std::numbers::pi / shape.sampleRate;
    for (std::size_t frame = 0; frame < shape.frames; ++frame) {
        for (unsigned channel = 0; channel < shape.channels; ++channel) {
            std::int32_t sample = 0;
            switch (shape.signal) {
            case Signal::Silence:
                break;
            case Signal::Sine:
                sample = static_cast<std::int32_t>(
                    0.5 * top * std::sin(step * static_cast<double>(frame) + channel * std::numbers::pi / 2));
                break;
            case Signal::Noise:
                sample = static_cast<std::int32_t>(random()) >> (32 - shape.bitsPerSample);
                break;
            case Signal::FullScaleSquare:
                sample = frame % 2 == 0 ? top : -top - 1;
                break;
            }
            audio.samples.push_back(sample);
        }
    }
    return audio;
}

QByteArray wavBytes(const Audio &audio)
{
    const bool extensible = audio.channels > 2 || audio.bitsPerSample > 16;
    const unsigned blockSize = audio.channels * audio.bitsPerSample / 8;
    QByteArray format;
    appendInteger(format, extensible ? extensibleTag : pcmTag, 2, ByteOrder::Little);
    appendInteger(format, audio.channels, 2, ByteOrder::Little);
    appendInteger(format, audio.sampleRate, 4, ByteOrder::Little);
    appendInteger(format, std::uint64_t{audio.sampleRate} * blockSize, 4, ByteOrder::Little);
    appendInteger(format, blockSize, 2, ByteOrder::Little);
    appendInteger(format, audio.bitsPerSample, 2, ByteOrder::Little);
    if (extensible) {
        // The usual speakers of so many channels; for one, front centre.
        constexpr unsigned speakers[] = {0x0, 0x4, 0x3, 0x7, 0x33, 0x37, 0x3F, 0x70F, 0x63F};
        appendInteger(format, 22, 2, ByteOrder::Little);
        appendInteger(format, audio.bitsPerSample, 2, ByteOrder::Little);
        appendInteger(format, audio.channels < std::size(speakers) ? speakers[audio.channels] : 0, 4,
                      ByteOrder::Little);
        format.append(QByteArray::fromHex("0100000000001000800000aa00389b71"));
    }
    QByteArray chunks = QByteArrayLiteral("WAVE");
    appendChunk(chunks, "fmt ", format, ByteOrder::Little);
    appendChunk(chunks, "data", pcmBytes(audio, ByteOrder::Little), ByteOrder::Little);
    QByteArray file;
    appendChunk(file, "RIFF", chunks, ByteOrder::Little);
    return file;
}

QByteArray aiffBytes(const Audio &audio)
{
    QByteArray common;
    appendInteger(common, audio.channels, 2, ByteOrder::Big);
    appendInteger(common, audio.frames(), 4, ByteOrder::Big);
    appendInteger(common, audio.bitsPerSample, 2, ByteOrder::Big);
    // The rate as an 80-bit extended float: its highest bit set is the integer bit of the significand.
    const int leadingZeros = std::countl_zero(std::uint64_t{audio.sampleRate});
    appendInteger(common, static_cast<std::uint64_t>(exponentBias + 63 - leadingZeros), 2, ByteOrder::Big);
    appendInteger(common, std::uint64_t{audio.sampleRate} << leadingZeros, 8, ByteOrder::Big);
    QByteArray sound(8, '\0'); // offset and block size, both unused
    sound.append(pcmBytes(audio, ByteOrder::Big));
    QByteArray chunks = QByteArrayLiteral("AIFF");
    appendChunk(chunks, "COMM", common, ByteOrder::Big);
    appendChunk(chunks, "SSND", sound, ByteOrder::Big);
    QByteArray file;
    appendChunk(file, "FORM", chunks, ByteOrder::Big);
    return file;
}

void writeWav(const QString &path, const AudioShape &shape)
{
    writeFile(path, wavBytes(makeAudio(shape)));
}

void writeAiff(const QString &path, const AudioShape &shape)
{
    writeFile(path, aiffBytes(makeAudio(shape)));
}

Audio readWav(const QString &path)
{
    const QByteArray bytes = readFile(path);
    if (!bytes.startsWith("RIFF") || bytes.mid(8, 4) != "WAVE") {
        throw std::runtime_error("not a RIFF WAVE file");
    }
    const QByteArray format = chunk(bytes, "fmt ", ByteOrder::Little);
    Audio audio;
    audio.channels = static_cast<unsigned>(integerAt(format, 2, 2, ByteOrder::Little));
    audio.sampleRate = static_cast<unsigned>(integerAt(format, 4, 4, ByteOrder::Little));
    audio.bitsPerSample = static_cast<unsigned>(integerAt(format, 14, 2, ByteOrder::Little));
    audio.samples =
        samplesIn(chunk(bytes, "data", ByteOrder::Little), audio.bitsPerSample, ByteOrder::Little);
    return audio;
}

Audio readAiff(const QString &path)
{
    const QByteArray bytes = readFile(path);
    if (!bytes.startsWith("FORM") || bytes.mid(8, 4) != "AIFF") {
        throw std::runtime_error("not an AIFF file");
    }
    const QByteArray common = chunk(bytes, "COMM", ByteOrder::Big);
    Audio audio;
    audio.channels = static_cast<unsigned>(integerAt(common, 0, 2, ByteOrder::Big));
    audio.bitsPerSample = static_cast<unsigned>(integerAt(common, 6, 2, ByteOrder::Big));
    const int exponent = static_cast<int>(integerAt(common, 8, 2, ByteOrder::Big)) - exponentBias;
    const std::uint64_t significand = integerAt(common, 10, 8, ByteOrder::Big);
    audio.sampleRate =
        exponent < 0 || exponent > 63 ? 0 : static_cast<unsigned>(significand >> (63 - exponent));
    audio.samples =
        samplesIn(chunk(bytes, "SSND", ByteOrder::Big).mid(8), audio.bitsPerSample, ByteOrder::Big);
    return audio;
}

} // namespace kruv::test
