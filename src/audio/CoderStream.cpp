// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/CoderStream.h"

#include "audio/FileDescriptor.h"
#include "audio/PcmHeaders.h"
#include "common/MemorySink.h"
#include "mac/Decompressor.h"
#include "mac/MacError.h"
#include "shorten/Decoder.h"

#include <algorithm>

namespace kruv::CoderStream {

namespace {

/// Whatever a decoder's next() gives, which is empty once, at the end.
template <typename Decoder>
std::unique_ptr<tools::InputStream> streamOf(const std::shared_ptr<Decoder> &decoder, const QString &path)
{
    const auto read = [decoder, piece = std::span<const std::uint8_t>(),
                       ended = false](std::span<std::uint8_t> destination) mutable {
        if (piece.empty() && !ended) {
            piece = decoder->next();
            ended = piece.empty();
        }
        const std::size_t count = std::min(destination.size(), piece.size());
        std::ranges::copy(piece.first(count), destination.begin());
        piece = piece.subspan(count);
        return count;
    };
    return std::make_unique<tools::InputStream>(read, path.toStdString());
}

class ShortenPieces
{
public:
    ShortenPieces(const QString &path, std::int64_t start)
        : m_input(FileDescriptor::openForReading(path).release(), path.toStdString())
        , m_decoder(skipped(m_input, start), m_sink)
    {
    }

    std::span<const std::uint8_t> next()
    {
        m_sink.take();
        while (m_sink.bytes().empty() && m_decoder.step()) {
        }
        return m_sink.bytes();
    }

private:
    static tools::InputStream &skipped(tools::InputStream &input, std::int64_t count)
    {
        input.skip(static_cast<std::uint64_t>(count));
        return input;
    }

    tools::InputStream m_input;
    tools::MemorySink m_sink;
    shorten::Decoder m_decoder;
};

class MonkeysAudioPieces
{
public:
    explicit MonkeysAudioPieces(const QString &path)
        : m_input(FileDescriptor::openForReading(path).release(), path.toStdString())
        , m_decompressor(m_input)
    {
    }

    std::span<const std::uint8_t> next()
    {
        if (m_header.empty()) {
            m_header = header();
            return m_header;
        }
        return m_decompressor.next();
    }

private:
    std::vector<std::uint8_t> header() const
    {
        const mac::StreamInfo &info = m_decompressor.info();
        const AudioStreamFormat format{.sampleRate = info.sampleRate,
                                       .channels = info.channels,
                                       .bitsPerChannel = info.bitsPerSample,
                                       .bytesPerFrame = info.blockBytes()};
        return PcmHeaders::wav(format, static_cast<std::int64_t>(info.totalBlocks()), true);
    }

    mac::RandomInput m_input;
    mac::Decompressor m_decompressor;
    std::vector<std::uint8_t> m_header;
};

} // namespace

std::unique_ptr<tools::InputStream> shorten(const QString &path, std::int64_t start)
{
    return streamOf(std::make_shared<ShortenPieces>(path, start), path);
}

std::unique_ptr<tools::InputStream> monkeysAudio(const QString &path)
{
    try {
        return streamOf(std::make_shared<MonkeysAudioPieces>(path), path);
    } catch (const mac::MacError &refusal) {
        if (refusal.number() == mac::ErrorNumber::FileVersion) {
            return {};
        }
        throw;
    }
}

} // namespace kruv::CoderStream
