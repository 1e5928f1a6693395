// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/Encoder.h"

#include "common/Crc32.h"
#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/OutputFile.h"
#include "common/SpoolFile.h"
#include "common/ToolError.h"
#include "common/WavReader.h"
#include "ttaenc/BitWriter.h"
#include "ttaenc/Filter.h"
#include "ttaenc/Pcm.h"
#include "ttaenc/StreamHeader.h"

#include <array>
#include <vector>

namespace kruv::ttaenc {

namespace {

/// Everything before the first frame: the header and the table of frame sizes with its checksum.
std::vector<std::uint8_t> preamble(const StreamHeader &header, const std::vector<std::uint32_t> &frameSizes)
{
    const auto fixed = header.toBytes();
    std::vector<std::uint8_t> table(frameSizes.size() * 4);
    for (std::size_t i = 0; i < frameSizes.size(); ++i) {
        tools::writeLe32(&table[4 * i], frameSizes[i]);
    }
    const std::uint32_t checksum = tools::crc32(table);
    table.resize(table.size() + 4);
    tools::writeLe32(&table[table.size() - 4], checksum);
    table.insert(table.begin(), fixed.begin(), fixed.end());
    return table;
}

class FrameEncoder
{
public:
    FrameEncoder(tools::WavReader &wav, const StreamHeader &header, tools::ByteSink &sink)
        : m_wav(wav)
        , m_format(header.format())
        , m_writer(sink)
        , m_bytes(std::size_t(header.stepsPerFrame()) * m_format.bytesPerFrame())
        , m_samples(std::size_t(header.stepsPerFrame()) * m_format.channels)
    {
    }

    /// False at the end of the audio.
    bool encodeNext()
    {
        const std::size_t got = m_wav.readAudio(m_bytes);
        if (got == 0) {
            return false;
        }
        const auto samples = std::span(m_samples).first(got / m_format.bytesPerSample());
        unpackPcm(std::span(m_bytes).first(got), m_format.bytesPerSample(), samples);
        decorrelate(samples, m_format.channels);
        Filter::best().encode(samples.data(), samples.size() / m_format.channels, m_format.channels,
                              m_format.bytesPerSample());
        m_frameSizes.push_back(m_writer.putFrame(samples, m_format.channels));
        m_audioBytes += got;
        return true;
    }

    const std::vector<std::uint32_t> &frameSizes() const { return m_frameSizes; }
    std::uint64_t audioBytes() const { return m_audioBytes; }

private:
    tools::WavReader &m_wav;
    tools::WavFormat m_format;
    BitWriter m_writer;
    std::vector<std::uint8_t> m_bytes;
    std::vector<std::int32_t> m_samples;
    std::vector<std::uint32_t> m_frameSizes;
    std::uint64_t m_audioBytes = 0;
};

void encodeInPlace(tools::WavReader &wav, const StreamHeader &header, tools::OutputFile &output,
                   const Progress &progress)
{
    const std::uint64_t start = output.position();
    output.write(preamble(header, std::vector<std::uint32_t>(header.frameCount())));
    FrameEncoder encoder(wav, header, output);
    while (encoder.encodeNext()) {
        progress(encoder.audioBytes(), *wav.audioBytes());
    }
    if (encoder.audioBytes() != *wav.audioBytes()) {
        throw tools::ToolError("the input changed while it was read");
    }
    output.rewrite(start, preamble(header, encoder.frameSizes()));
}

void encodeThroughSpool(tools::WavReader &wav, const StreamHeader &provisional, tools::OutputFile &output,
                        const Progress &progress)
{
    tools::SpoolFile spool;
    FrameEncoder encoder(wav, provisional, spool);
    while (encoder.encodeNext()) {
        progress(encoder.audioBytes(), wav.audioBytes().value_or(0));
    }
    const StreamHeader header(wav.format(), encoder.audioBytes() / wav.format().bytesPerFrame());
    output.write(preamble(header, encoder.frameSizes()));
    spool.copyTo(output);
}

} // namespace

std::string encode(tools::InputStream &input, tools::OutputFile &output, const Progress &progress)
{
    tools::WavReader wav(input);
    const StreamHeader header(wav.format(), wav.audioBytes().value_or(0) / wav.format().bytesPerFrame());
    if (input.size() && output.canRewrite()) {
        encodeInPlace(wav, header, output, progress);
    } else {
        encodeThroughSpool(wav, header, output, progress);
    }
    // A program that writes to our input must not die of a closed pipe only because it has more chunks.
    std::array<std::uint8_t, 4096> unused = {};
    while (!input.size() && wav.readTrailing(unused) > 0) {
    }
    return wav.endedEarly() ? input.name() + " has less audio than its header states" : std::string();
}

} // namespace kruv::ttaenc
