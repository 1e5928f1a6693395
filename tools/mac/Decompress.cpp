// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Decompress.h"

#include "Decompressor.h"
#include "MacError.h"
#include "common/OutputFile.h"
#include "common/WavFormat.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace kruv::mac {

namespace {

/// Decodes and checks all frames.
void decodeFrames(Decompressor &decompressor, TimedProgress &progress, const ApeReader::Take &take)
{
    for (auto pcm = decompressor.next(); !pcm.empty(); pcm = decompressor.next()) {
        take(pcm);
        progress.update(decompressor.framesDone(), decompressor.info().totalFrames);
    }
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
    Decompressor decompressor(input);
    const ApeReader &reader = decompressor.reader();
    const StreamInfo &info = reader.info();
    const auto write = [&](std::span<const uint8_t> bytes) { output.write(bytes); };
    const bool hasHeader = reader.wavHeader().size > 0;
    if (hasHeader) {
        reader.read(reader.wavHeader(), write);
    } else {
        output.write(newWavHeader(info, reader.tail().size));
    }
    decodeFrames(decompressor, progress, write);
    reader.read(reader.tail(), write);
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
    Decompressor decompressor(input);
    decodeFrames(decompressor, progress, [](std::span<const uint8_t>) {});
}

} // namespace kruv::mac
