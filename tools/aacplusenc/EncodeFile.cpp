// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "EncodeFile.h"

#include "HeAacEncoder.h"
#include "Mp4Writer.h"
#include "common/InputStream.h"
#include "common/OutputFile.h"
#include "common/PcmReader.h"
#include "common/ProgressPrinter.h"
#include "common/ToolError.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <utility>

namespace kruv::aacplusenc {
namespace {

using tools::PcmReader;
using tools::ToolError;

/// The sample, with @p size bytes, rounded to the 16 bits that the encoder works on.
std::int16_t roundedSample(const std::uint8_t *bytes, std::size_t size)
{
    std::uint32_t value = 0; // the sample in the upper bits
    for (std::size_t i = 0; i < size; ++i) {
        value |= std::uint32_t{bytes[i]} << (8 * (4 - size + i));
    }
    const std::int64_t rounded = (std::int64_t{static_cast<std::int32_t>(value)} + 0x8000) >> 16;
    return static_cast<std::int16_t>(std::min<std::int64_t>(rounded, 0x7FFF));
}

/// Gives the source in blocks of a fixed number of frames, with silence before it and without end behind it.
class BlockReader
{
public:
    BlockReader(PcmReader &source, std::size_t framesPerBlock, std::size_t leadingSilence)
        : m_source(source)
        , m_channels(source.format().channels)
        , m_silence(leadingSilence)
        , m_samples(framesPerBlock * m_channels)
    {
    }

    /// Valid until the next call.
    std::span<const std::int16_t> next()
    {
        std::ranges::fill(m_samples, std::int16_t{0});
        const auto audio = std::span(m_samples).subspan(std::exchange(m_silence, 0) * m_channels);
        const std::size_t size = m_source.format().bytesPerSample();
        m_bytes.resize(audio.size() * size);
        const std::size_t count = m_source.read(m_bytes) / size;
        for (std::size_t i = 0; i < count; ++i) {
            audio[i] = roundedSample(&m_bytes[i * size], size);
        }
        m_atEnd = count < audio.size();
        m_frames += count / m_channels;
        return m_samples;
    }

    /// True when there was not enough of the source to fill the last block.
    bool atEnd() const { return m_atEnd; }
    /// Frames of the source so far.
    std::uint64_t frames() const { return m_frames; }

private:
    PcmReader &m_source;
    const std::size_t m_channels;
    std::size_t m_silence;
    std::vector<std::int16_t> m_samples;
    std::vector<std::uint8_t> m_bytes;
    std::uint64_t m_frames = 0;
    bool m_atEnd = false;
};

/// Frames of silence to encode before a source of the given length, so that the last access unit ends where
/// the source ends. Every player cuts the delay at the start off, hardly one a remainder at the end. Always
/// even: the delay is stored at half the sample rate.
std::uint32_t leadingSilence(const HeAacEncoder &encoder, std::optional<std::uint64_t> frames)
{
    if (!frames) {
        return 0;
    }
    const std::uint64_t unit = encoder.framesPerAccessUnit();
    const std::uint64_t used = (encoder.delay() + *frames) % unit;
    return static_cast<std::uint32_t>((unit - used) % unit / 2 * 2);
}

AacTrack describeTrack(const tools::PcmFormat &format, const HeAacEncoder &encoder, std::uint32_t silence,
                       std::uint32_t bitRate)
{
    AacTrack track;
    track.sampleRate = format.sampleRate;
    track.coreSampleRate = format.sampleRate / 2; // spectral band replication doubles it
    track.channels = format.channels;
    track.framesPerAccessUnit = encoder.framesPerAccessUnit();
    track.encoderDelay = encoder.delay() + silence;
    track.bitRate = bitRate;
    track.decoderConfig = encoder.decoderConfig();
    return track;
}

/// Encodes the silence and all of the source; returns the source's length in frames.
std::uint64_t encodeAll(PcmReader &source, HeAacEncoder &encoder, std::uint32_t silence, Mp4Writer &writer,
                        tools::ProgressPrinter &progress)
{
    BlockReader reader(source, encoder.framesPerAccessUnit(), silence);
    const std::uint64_t unit = encoder.framesPerAccessUnit();
    std::uint64_t encoded = 0; // frames that the access units written so far stand for
    const auto needed = [&] {
        // Some players drop a last access unit of which they would play less than half. A source longer than
        // that is never cut there; behind a shorter one stands one more.
        const std::uint64_t extra = reader.frames() < unit ? unit : 0;
        return encoder.delay() + silence + reader.frames() + extra;
    };
    while (!reader.atEnd() || encoded < needed()) {
        const auto accessUnit = encoder.encode(reader.next());
        if (!accessUnit.empty()) {
            writer.write(accessUnit);
            encoded += unit;
        }
        progress.update(reader.frames(), source.frames().value_or(0));
    }
    return reader.frames();
}

std::uint32_t parseKilobits(const std::string &text)
{
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value == 0 || value > 2000) {
        throw ToolError("\"" + text + "\" is no bit rate in kbit/s");
    }
    return value;
}

} // namespace

void encodeFile(const std::string &input, const std::string &output, std::uint32_t kilobits)
{
    tools::InputStream stream(input);
    if (stream.isFile(output)) {
        throw ToolError("input and output are the same file");
    }
    PcmReader source(stream);
    const tools::PcmFormat &format = source.format();
    HeAacEncoder encoder(format.sampleRate, format.channels, format.channelMask, kilobits * 1000);
    tools::OutputFile file(output);
    if (!file.canRewrite()) {
        throw ToolError(output + " is not an ordinary file");
    }
    const std::uint32_t silence = leadingSilence(encoder, source.frames());
    Mp4Writer writer(file, describeTrack(format, encoder, silence, kilobits * 1000));
    tools::ProgressPrinter progress({"[", "%]\r", 3, "\n"});
    const std::uint64_t frames = encodeAll(source, encoder, silence, writer, progress);
    if (source.endedEarly()) {
        throw ToolError(stream.name() + " is shorter than its header says");
    }
    if (frames == 0) {
        throw ToolError(stream.name() + " holds no audio");
    }
    writer.finish(frames);
    file.commit();
    progress.finish();
}

int run(const std::vector<std::string> &arguments)
{
    if (arguments.size() == 1 && arguments[0] == "--version") {
        std::puts("aacplusenc " KRUV_VERSION);
        return 0;
    }
    if (arguments.size() != 3) {
        std::fputs("usage: aacplusenc IN OUT.m4a KBPS\n"
                   "Encodes a WAV or AIFF file to HE-AAC at KBPS kbit/s, with parametric stereo up to 44.\n",
                   stderr);
        return 2;
    }
    encodeFile(arguments[0], arguments[1], parseKilobits(arguments[2]));
    return 0;
}

} // namespace kruv::aacplusenc
