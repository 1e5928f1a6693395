// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "shorten/WavEncoder.h"

#include "common/InputStream.h"
#include "common/ToolError.h"
#include "common/WavReader.h"
#include "shorten/Encoder.h"

#include <string>
#include <vector>

namespace kruv::shorten {

namespace {

constexpr std::uint32_t unsignedByte = 2;
constexpr std::uint32_t signedLowFirst16 = 5;

StreamHeader headerFor(const tools::WavFormat &format, const std::string &name)
{
    if (format.bitsPerSample != 8 && format.bitsPerSample != 16) {
        throw tools::ToolError(name + ": Shorten holds 8 or 16 bits per sample, not " +
                               std::to_string(format.bitsPerSample));
    }
    if (format.channels > largestChannels) {
        throw tools::ToolError(name + ": Shorten holds up to 8 channels, not " +
                               std::to_string(format.channels));
    }
    StreamHeader header;
    header.typeNumber = format.bitsPerSample == 8 ? unsignedByte : signedLowFirst16;
    header.channels = format.channels;
    return header;
}

} // namespace

std::string encodeWav(tools::InputStream &input, tools::ByteSink &output)
{
    tools::WavReader wav(input);
    const StreamHeader header = headerFor(wav.format(), input.name());
    Encoder encoder(output, header);
    // What the others have around their audio stands in no RIFF file, which is what decoders give.
    const auto plain = wav.format().header(wav.audioBytes().value_or(0xFFFFFFFF));
    encoder.putVerbatim(wav.isRiff() ? std::span<const std::uint8_t>(wav.header()) : plain);
    std::vector<std::uint8_t> block(std::size_t(header.blockSize) * wav.format().bytesPerFrame());
    while (const std::size_t got = wav.readAudio(block)) {
        encoder.putBlock(std::span(block).first(got));
    }
    while (const std::size_t got = wav.readTrailing(block)) {
        if (wav.isRiff()) {
            encoder.putVerbatim(std::span(block).first(got));
        }
    }
    if (!wav.isRiff() && wav.audioBytes().value_or(0) % 2 != 0) {
        encoder.putVerbatim(std::vector<std::uint8_t>(1));
    }
    encoder.finish();
    return wav.endedEarly() ? input.name() + " has less audio than its header states" : std::string();
}

} // namespace kruv::shorten
