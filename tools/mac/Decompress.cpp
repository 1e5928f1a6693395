// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Decompress.h"

#include "ApeReader.h"
#include "FrameDecoder.h"
#include "MacError.h"
#include "common/OutputFile.h"
#include "common/WavFormat.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

namespace kruv::mac {

namespace {

using Take = std::function<void(std::span<const uint8_t>)>;

/// Hands a run of the file out in pieces.
void readRange(const RandomInput &input, ApeReader::Range range, const Take &take)
{
    std::vector<uint8_t> piece(std::size_t{64} * 1024);
    while (range.size > 0) {
        const auto wanted = static_cast<std::size_t>(std::min<uint64_t>(range.size, piece.size()));
        const std::size_t got = input.readAt(range.offset, std::span(piece).first(wanted));
        if (got == 0) {
            throw MacError(ErrorNumber::Read, input.name() + " became shorter while it was read");
        }
        take(std::span<const uint8_t>(piece).first(got));
        range.offset += got;
        range.size -= got;
    }
}

/// Follows the decoder with the file's MD5, while the bytes are still in the system's cache.
class DigestCheck
{
public:
    DigestCheck(const RandomInput &input, const ApeReader &reader)
        : m_input(input)
        , m_reader(reader)
        , m_position(reader.digestRanges()[0].offset)
    {
    }

    void advance(uint64_t offset)
    {
        if (!m_reader.digest() || offset <= m_position) {
            return;
        }
        add({m_position, offset - m_position});
        m_position = offset;
    }

    void finish()
    {
        if (!m_reader.digest()) {
            return;
        }
        const auto [content, header, seekTable] = m_reader.digestRanges();
        advance(content.end());
        add(header);
        add(seekTable);
        if (m_md5.finish() != *m_reader.digest()) {
            throw MacError(ErrorNumber::Checksum,
                           m_input.name() + ": the file does not match its MD5 checksum");
        }
    }

private:
    void add(ApeReader::Range range)
    {
        readRange(m_input, range, [this](std::span<const uint8_t> piece) { m_md5.add(piece); });
    }

    const RandomInput &m_input;
    const ApeReader &m_reader;
    Md5 m_md5;
    uint64_t m_position;
};

/// Decodes and checks all frames.
void decodeFrames(const RandomInput &input, const ApeReader &reader, TimedProgress &progress,
                  const Take &take)
{
    const StreamInfo &info = reader.info();
    FrameDecoder decoder(info);
    DigestCheck digest(input, reader);
    std::vector<uint8_t> pcm;
    for (uint32_t frame = 0; frame < info.totalFrames; ++frame) {
        pcm.resize(std::size_t{info.blocksOfFrame(frame)} * info.blockBytes());
        FrameBytes bytes = reader.frameBytes(frame);
        try {
            decoder.decode(bytes, pcm);
        } catch (const MacError &error) {
            throw MacError(error.number(), input.name() + ": " + error.what() + " (frame " +
                                               std::to_string(frame + 1) + " of " +
                                               std::to_string(info.totalFrames) + ")");
        }
        take(pcm);
        digest.advance(reader.frameEnd(frame));
        progress.update(frame + 1, info.totalFrames);
    }
    digest.finish();
}

std::vector<uint8_t> newWavHeader(const StreamInfo &info, uint64_t tailSize)
{
    const tools::WavFormat format{info.sampleRate, info.channels, info.bitsPerSample};
    const uint64_t audioBytes = info.totalBlocks() * info.blockBytes();
    const auto header = format.header(audioBytes);
    std::vector<uint8_t> bytes(header.begin(), header.end());
    if (tailSize > 0) {
        // The tail brings its own pad byte.
        const uint64_t riffSize = header.size() - 8 + audioBytes + tailSize;
        tools::writeLe32(&bytes[4], static_cast<uint32_t>(
                                        std::min<uint64_t>(riffSize, std::numeric_limits<uint32_t>::max())));
    }
    return bytes;
}

} // namespace

void decompress(const RandomInput &input, tools::ByteSink &output, TimedProgress &progress)
{
    const ApeReader reader(input);
    const StreamInfo &info = reader.info();
    const Take write = [&](std::span<const uint8_t> bytes) { output.write(bytes); };
    const bool hasHeader = reader.wavHeader().size > 0;
    if (hasHeader) {
        readRange(input, reader.wavHeader(), write);
    } else {
        output.write(newWavHeader(info, reader.tail().size));
    }
    decodeFrames(input, reader, progress, write);
    readRange(input, reader.tail(), write);
    const bool oddLength = info.totalBlocks() * info.blockBytes() % 2 != 0;
    if (!hasHeader && reader.tail().size == 0 && oddLength) {
        output.write(std::vector<uint8_t>(1));
    }
}

void decompress(const std::string &inputPath, const std::string &outputPath, TimedProgress &progress)
{
    const RandomInput input(inputPath);
    if (input.isFile(outputPath)) {
        throw MacError(ErrorNumber::InvalidOutput, "input and output are the same file");
    }
    std::optional<tools::OutputFile> output;
    numbered(ErrorNumber::InvalidOutput, [&] { output.emplace(outputPath); });
    numbered(ErrorNumber::Write, [&] {
        decompress(input, *output, progress);
        output->commit();
    });
}

void verify(const std::string &inputPath, TimedProgress &progress)
{
    const RandomInput input(inputPath);
    decodeFrames(input, ApeReader(input), progress, [](std::span<const uint8_t>) {});
}

} // namespace kruv::mac
