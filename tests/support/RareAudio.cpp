// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/RareAudio.h"

#include "common/Crc32.h"

#include <QList>
#include <QtEndian>

#include <algorithm>
#include <functional>
#include <span>

namespace kruv::test {

namespace {

constexpr std::size_t packetFrames = 1000;
constexpr quint64 dsdRate = 2'822'400;

QByteArray little(quint64 value, int bytes)
{
    const quint64 ordered = qToLittleEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&ordered), bytes);
}

QByteArray big(quint64 value, int bytes)
{
    const quint64 ordered = qToBigEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&ordered) + sizeof ordered - bytes, bytes);
}

enum class Order { HighestFirst, LowestFirst };

class BitWriter
{
public:
    explicit BitWriter(Order order = Order::HighestFirst)
        : m_order(order)
    {
    }

    BitWriter &put(quint64 value, unsigned count)
    {
        for (unsigned i = 0; i < count; ++i, ++m_used) {
            if (m_used % 8 == 0) {
                m_bytes.append('\0');
            }
            const bool highest = m_order == Order::HighestFirst;
            const auto bit = static_cast<unsigned>(value >> (highest ? count - 1 - i : i) & 1);
            m_bytes.back() =
                static_cast<char>(m_bytes.back() | bit << (highest ? 7 - m_used % 8 : m_used % 8));
        }
        return *this;
    }
    /// Filled up with zeros to a whole byte.
    BitWriter &align() { return put(0, (8 - m_used % 8) % 8); }
    const QByteArray &bytes() const { return m_bytes; }

private:
    const Order m_order;
    QByteArray m_bytes;
    unsigned m_used = 0;
};

QByteArray box(const char *type, const QByteArray &content)
{
    return big(static_cast<quint64>(content.size()) + 8, 4) + type + content;
}

/// A box with version and flags.
QByteArray fullBox(const char *type, const QByteArray &content)
{
    return box(type, big(0, 4) + content);
}

QByteArray descriptor(char tag, const QByteArray &content)
{
    return tag + big(static_cast<quint64>(content.size()), 1) + content;
}

struct Track
{
    const char *type;    // of the sample description
    QByteArray codecBox; // what the decoder has to know
    QList<QByteArray> packets;
};

QByteArray mp4Bytes(const Audio &audio, const Track &track)
{
    const QByteArray start = box("ftyp", "M4A " + big(0, 4) + "M4A ");
    const quint64 count = static_cast<quint64>(track.packets.size());
    const quint64 last = audio.frames() - (count - 1) * packetFrames;
    QByteArray sizes;
    for (const QByteArray &packet : track.packets) {
        sizes += big(static_cast<quint64>(packet.size()), 4);
    }
    const QByteArray entry = box(track.type, big(0, 6) + big(1, 2) + big(0, 8) + big(audio.channels, 2) +
                                                 big(std::min(audio.bitsPerSample, 16U), 2) + big(0, 4) +
                                                 big(audio.sampleRate, 2) + big(0, 2) + track.codecBox);
    const QByteArray table =
        fullBox("stsd", big(1, 4) + entry) +
        fullBox("stts", big(2, 4) + big(count - 1, 4) + big(packetFrames, 4) + big(1, 4) + big(last, 4)) +
        fullBox("stsc", big(1, 4) + big(1, 4) + big(count, 4) + big(1, 4)) +
        fullBox("stsz", big(0, 4) + big(count, 4) + sizes) +
        fullBox("stco", big(1, 4) + big(static_cast<quint64>(start.size()) + 8, 4));
    const QByteArray media =
        fullBox("mdhd", big(0, 8) + big(audio.sampleRate, 4) + big(audio.frames(), 4) + big(0, 4)) +
        fullBox("hdlr", big(0, 4) + "soun" + big(0, 8) + big(0, 5)) +
        box("minf", fullBox("smhd", big(0, 4)) + box("stbl", table));
    return start + box("mdat", track.packets.join()) + box("moov", box("trak", box("mdia", media)));
}

std::vector<std::int32_t> samplesOf(const Audio &audio, std::size_t packet, unsigned channel)
{
    std::vector<std::int32_t> samples;
    const std::size_t end = std::min((packet + 1) * packetFrames, audio.frames());
    for (std::size_t frame = packet * packetFrames; frame < end; ++frame) {
        samples.push_back(audio.samples[frame * audio.channels + channel]);
    }
    return samples;
}

void putRiceCoded(BitWriter &bits, std::int64_t value, unsigned parameter)
{
    const auto rest = static_cast<quint64>(value < 0 ? ~value : value);
    const unsigned low = parameter - 1;
    for (quint64 i = 0; i < rest >> low; ++i) {
        bits.put(1, 1);
    }
    bits.put(0, 1).put(value < 0 ? 0 : 1, 1).put(rest, low);
}

QByteArray alsPacket(const Audio &audio, std::size_t packet)
{
    const unsigned width = audio.bitsPerSample > 16 ? 5 : 4;
    const unsigned parameter = std::min(audio.bitsPerSample - 1, (1U << width) - 1);
    BitWriter bits;
    for (unsigned channel = 0; channel < audio.channels; ++channel) {
        const std::vector<std::int32_t> samples = samplesOf(audio, packet, channel);
        if (std::ranges::adjacent_find(samples, std::not_equal_to()) == samples.end()) {
            bits.put(0, 1).put(1, 1).put(0, 6);
            bits.put(static_cast<quint64>(samples.front()), audio.bitsPerSample);
            continue;
        }
        bits.put(1, 1).put(0, 1).put(parameter, width).put(0, 1);
        for (const std::int32_t sample : samples) {
            putRiceCoded(bits, sample, parameter);
        }
        bits.align();
    }
    return bits.bytes();
}

/// Of the samples in whole bytes, low byte first.
std::uint32_t checksumOf(const Audio &audio)
{
    std::uint32_t sum = 0;
    for (const std::int32_t sample : audio.samples) {
        const QByteArray bytes =
            little(static_cast<quint64>(sample), static_cast<int>(audio.bitsPerSample / 8));
        sum = tools::crc32({reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                            static_cast<std::size_t>(bytes.size())},
                           sum);
    }
    return sum;
}

/// ISO/IEC 14496-3, AudioSpecificConfig with an ALSSpecificConfig.
QByteArray alsConfiguration(const Audio &audio)
{
    constexpr unsigned escape = 31;
    constexpr unsigned als = 36;
    BitWriter bits;
    bits.put(escape, 5).put(als - 32, 6).put(4, 4).put(0, 4).put(0, 5); // a rate and channels that don't
                                                                        // count
    bits.put(0x414C5300, 32).put(audio.sampleRate, 32).put(audio.frames(), 32).put(audio.channels - 1, 16);
    bits.put(0, 3).put(audio.bitsPerSample / 8 - 1, 3).put(0, 2).put(packetFrames - 1, 16);
    bits.put(0, 8 + 2 + 1 + 2 + 1 + 10 + 2 + 6); // no random access, no prediction, nothing joined
    bits.put(1, 1).put(0, 1 + 5 + 1);            // with a checksum
    bits.align().put(0xFFFFFFFF, 32).put(0xFFFFFFFF, 32).put(checksumOf(audio), 32);
    return bits.bytes();
}

/// Uncompressed, and as long as it says.
QByteArray alacPacket(const Audio &audio, std::size_t packet)
{
    const std::size_t begin = packet * packetFrames;
    const std::size_t end = std::min(begin + packetFrames, audio.frames());
    BitWriter bits;
    bits.put(audio.channels - 1, 3).put(0, 4 + 12).put(1, 1).put(0, 2).put(1, 1).put(end - begin, 32);
    for (std::size_t i = begin * audio.channels; i < end * audio.channels; ++i) {
        bits.put(static_cast<quint64>(audio.samples[i]), audio.bitsPerSample);
    }
    return bits.put(7, 3).align().bytes();
}

/// With its CRC-24.
QByteArray takChecked(const QByteArray &bytes)
{
    quint32 sum = 0xB704CE;
    for (const char byte : bytes) {
        sum ^= static_cast<quint32>(static_cast<unsigned char>(byte)) << 16;
        for (int bit = 0; bit < 8; ++bit) {
            sum = sum << 1 ^ ((sum & 0x800000) != 0 ? 0x1864CFB : 0);
        }
    }
    return bytes + little(sum, 3);
}

void putTakDescription(BitWriter &bits, const Audio &audio)
{
    constexpr unsigned monoOrStereo = 2;
    constexpr unsigned quarters = 3; // of a second are a frame
    bits.put(monoOrStereo, 6).put(0, 4).put(quarters, 4).put(audio.frames(), 35).put(0, 3);
    bits.put(audio.sampleRate - 6000, 18)
        .put(audio.bitsPerSample - 8, 5)
        .put(audio.channels - 1, 4)
        .put(0, 1);
}

/// `samples` of one frame; the last one is not coded.
QByteArray takFrame(const Audio &audio, quint64 number, std::span<const std::int32_t> samples, bool isLast)
{
    constexpr unsigned last = 1;
    constexpr unsigned described = 2;
    const unsigned flags = (isLast ? last : 0) | (number == 0 ? described : 0);
    BitWriter head(Order::LowestFirst);
    head.put(0xA0FF, 16).put(flags, 3).put(number, 21);
    if (isLast) {
        head.put(samples.size() / audio.channels - 1, 14).put(0, 2);
    }
    if (number == 0) {
        putTakDescription(head, audio);
        head.put(0, 6);
    }
    BitWriter body(Order::LowestFirst);
    for (unsigned channel = 0; channel < audio.channels; ++channel) {
        if (isLast) {
            for (std::size_t i = channel; i < samples.size(); i += audio.channels) {
                body.put(static_cast<quint64>(samples[i]), audio.bitsPerSample);
            }
        } else {
            constexpr unsigned differences = 1; // all of them 0
            body.put(0, 1).put(static_cast<quint64>(samples[channel]), audio.bitsPerSample);
            body.put(differences, 2).put(0, 3 + 1 + 1 + 6);
        }
    }
    if (!isLast && audio.channels == 2) {
        body.put(0, 1 + 3); // the channels stand for themselves
    }
    return takChecked(head.align().bytes()) + takChecked(body.align().bytes());
}

QList<QByteArray> packetsOf(const Audio &audio, QByteArray (*packet)(const Audio &, std::size_t))
{
    QList<QByteArray> packets;
    for (std::size_t i = 0; i * packetFrames < audio.frames(); ++i) {
        packets.append(packet(audio, i));
    }
    return packets;
}

} // namespace

QByteArray dsfBytes(const QByteArray &bits)
{
    constexpr qsizetype block = 4096; // bytes of a channel; the earliest sample in the lowest bit
    QByteArray samples((bits.size() + 2 * block - 1) / (2 * block) * 2 * block, '\0');
    for (qsizetype i = 0; i < bits.size(); ++i) {
        const qsizetype byte = i / 2;
        const auto forwards = static_cast<unsigned char>(bits[i]);
        unsigned backwards = 0;
        for (int bit = 0; bit < 8; ++bit) {
            backwards |= (forwards >> bit & 1U) << (7 - bit);
        }
        samples[(byte / block * 2 + i % 2) * block + byte % block] = static_cast<char>(backwards);
    }
    const auto data = 12 + static_cast<quint64>(samples.size());
    return "DSD " + little(28, 8) + little(28 + 52 + data, 8) + little(0, 8) + "fmt " + little(52, 8) +
           little(1, 4) + little(0, 4) + little(2, 4) + little(2, 4) + little(dsdRate, 4) + little(1, 4) +
           little(static_cast<quint64>(bits.size()) * 4, 8) + little(block, 4) + little(0, 4) + "data" +
           little(data, 8) + samples;
}

QByteArray dffBytes(const QByteArray &bits)
{
    const auto chunk = [](const char *id, const QByteArray &content) {
        return id + big(static_cast<quint64>(content.size()), 8) + content;
    };
    const QByteArray properties = "SND " + chunk("FS  ", big(dsdRate, 4)) +
                                  chunk("CHNL", big(2, 2) + "SLFTSRGT") +
                                  chunk("CMPR", "DSD " + big(14, 1) + "not compressed" + big(0, 1));
    return chunk("FRM8", "DSD " + chunk("FVER", big(0x01050000, 4)) + chunk("PROP", properties) +
                             chunk("DSD ", bits));
}

QByteArray alsBytes(const Audio &audio)
{
    const QByteArray decoder = descriptor(4, big(0x40, 1) + big(0x15, 1) + QByteArray(11, '\0') +
                                                 descriptor(5, alsConfiguration(audio)));
    const QByteArray stream = descriptor(3, big(0, 3) + decoder + descriptor(6, big(2, 1)));
    return mp4Bytes(audio, {"mp4a", fullBox("esds", stream), packetsOf(audio, alsPacket)});
}

QByteArray takBytes(const Audio &audio)
{
    BitWriter description(Order::LowestFirst);
    putTakDescription(description, audio);
    const QByteArray checked = takChecked(description.align().bytes());
    QByteArray file =
        "tBaK" + big(1, 1) + little(static_cast<quint64>(checked.size()), 3) + checked + big(0, 4);
    const std::size_t quarter = std::size_t{audio.sampleRate} / 4 * audio.channels;
    const std::span<const std::int32_t> samples = audio.samples;
    for (std::size_t at = 0; at < samples.size(); at += quarter) {
        const bool isLast = samples.size() - at <= quarter;
        file += takFrame(audio, at / quarter, samples.subspan(at, isLast ? samples.size() - at : quarter),
                         isLast);
    }
    return file;
}

QByteArray alacBytes(const Audio &audio)
{
    const QByteArray cookie = big(packetFrames, 4) + big(0, 1) + big(audio.bitsPerSample, 1) + big(40, 1) +
                              big(10, 1) + big(14, 1) + big(audio.channels, 1) + big(255, 2) + big(0, 8) +
                              big(audio.sampleRate, 4);
    return mp4Bytes(audio, {"alac", fullBox("alac", cookie), packetsOf(audio, alacPacket)});
}

} // namespace kruv::test
