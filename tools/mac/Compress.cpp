// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Compress.h"

#include "ApeWriter.h"
#include "FrameEncoder.h"
#include "FramePacker.h"
#include "MacError.h"
#include "common/InputStream.h"
#include "common/OutputFile.h"
#include "common/SpoolFile.h"
#include "common/WavReader.h"

#include <optional>
#include <vector>

namespace kruv::mac {

namespace {

using tools::WavReader;

std::string folderOf(const std::string &path)
{
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

StreamInfo infoFor(const tools::WavFormat &format, const Level &level)
{
    if (format.bytesPerSample() > 3) {
        throw MacError(ErrorNumber::BitDepth, "only 8, 16 and 24 bits per sample are supported, not " +
                                                  std::to_string(format.bitsPerSample));
    }
    if (format.channels > 2) {
        throw MacError(ErrorNumber::ChannelCount,
                       "only one or two channels are supported, not " + std::to_string(format.channels));
    }
    StreamInfo info;
    info.level = level.number;
    info.channels = format.channels;
    // Samples of 20 bits, say, fill the upper bits of 24.
    info.bitsPerSample = static_cast<uint16_t>(format.bytesPerSample() * 8);
    info.sampleRate = format.sampleRate;
    info.blocksPerFrame = level.blocksPerFrame;
    return info;
}

/// One run of the encoder: from a WAV reader to a sink of frame data.
class Compressor
{
public:
    Compressor(WavReader &wav, const Level &level, TimedProgress &progress)
        : m_wav(wav)
        , m_info(infoFor(wav.format(), level))
        , m_encoder(m_info)
        , m_progress(progress)
    {
    }

    /// For a source whose length is certain, so that the seek table's is.
    void writeDirectly(tools::OutputFile &output, uint64_t audioBytes)
    {
        const uint64_t frameBytes = uint64_t{m_info.blocksPerFrame} * m_info.blockBytes();
        const auto frames = static_cast<uint32_t>((audioBytes + frameBytes - 1) / frameBytes);
        if (!m_wav.isRiff()) {
            m_info.flags = flagNoWavHeader; // decoders make one
        }
        ApeWriter writer(output, frames,
                         m_wav.isRiff() ? std::span<const uint8_t>(m_wav.header())
                                        : std::span<const uint8_t>());
        const std::vector<uint64_t> starts = encodeAll(writer);
        if (m_audioBytes != audioBytes) {
            throw MacError(ErrorNumber::Read, "the input changed while it was read");
        }
        writeEnd(writer, starts);
    }

    /// For a source of uncertain length: the frames wait in a temporary file beside the output.
    void writeSpooled(tools::OutputFile &output, const std::string &folder)
    {
        tools::SpoolFile spool(folder);
        const std::vector<uint64_t> starts = encodeAll(spool);
        const bool keepHeader = m_wav.isRiff() && headerStates(m_audioBytes) && !m_wav.endedEarly();
        if (!keepHeader) {
            m_info.flags = flagNoWavHeader;
        }
        if (m_wav.endedEarly()) {
            printMessage("\nmac: the input ends before the audio that its header states\n");
        }
        ApeWriter writer(output, m_info.totalFrames,
                         keepHeader ? std::span<const uint8_t>(m_wav.header()) : std::span<const uint8_t>());
        spool.copyTo(writer);
        writeEnd(writer, starts);
    }

    /// Whether the size of the audio is certain: in a header that will be kept it stands for so many bytes in
    /// whole blocks.
    bool isCertain(uint64_t audioBytes) const
    {
        return m_wav.isRiff() ? headerStates(audioBytes) : !m_wav.endedEarly();
    }

private:
    bool headerStates(uint64_t audioBytes) const
    {
        const uint32_t stated = tools::readLe32(m_wav.header().data() + m_wav.header().size() - 4);
        return stated >= audioBytes && stated - audioBytes < m_info.blockBytes();
    }

    std::vector<uint64_t> encodeAll(tools::ByteSink &sink);
    void writeEnd(ApeWriter &writer, std::span<const uint64_t> starts);

    WavReader &m_wav;
    StreamInfo m_info;
    FrameEncoder m_encoder;
    TimedProgress &m_progress;
    uint64_t m_audioBytes = 0;
};

std::vector<uint64_t> Compressor::encodeAll(tools::ByteSink &sink)
{
    FramePacker packer(sink);
    std::vector<uint8_t> pcm(std::size_t{m_info.blocksPerFrame} * m_info.blockBytes());
    for (;;) {
        const std::size_t got = numbered(ErrorNumber::Read, [&] { return m_wav.readAudio(pcm); });
        if (got == 0) {
            break;
        }
        if (m_info.totalFrames == largestFrameCount) {
            throw MacError(ErrorNumber::InputTooLarge, "the input is too long");
        }
        packer.add(m_encoder.encode(std::span<const uint8_t>(pcm).first(got)));
        m_audioBytes += got;
        ++m_info.totalFrames;
        m_info.finalFrameBlocks = static_cast<uint32_t>(got / m_info.blockBytes());
        m_progress.update(m_audioBytes, m_wav.audioBytes().value_or(0));
    }
    if (m_info.totalFrames == 0) {
        throw MacError(ErrorNumber::InputTooSmall, "the input holds no audio");
    }
    packer.finish();
    return packer.frameStarts();
}

void Compressor::writeEnd(ApeWriter &writer, std::span<const uint64_t> starts)
{
    std::vector<uint8_t> piece(std::size_t{64} * 1024);
    while (const std::size_t got = numbered(ErrorNumber::Read, [&] {
               return m_info.flags & flagNoWavHeader ? 0 : m_wav.readTrailing(piece);
           })) {
        writer.writeTail(std::span<const uint8_t>(piece).first(got));
    }
    writer.finish(m_info, starts);
}

} // namespace

void compress(const std::string &inputPath, const std::string &outputPath, const Level &level,
              TimedProgress &progress)
{
    std::optional<tools::InputStream> input;
    std::optional<WavReader> wav;
    numbered(ErrorNumber::InvalidInput, [&] {
        input.emplace(inputPath);
        wav.emplace(*input);
    });
    if (input->isFile(outputPath)) {
        throw MacError(ErrorNumber::InvalidOutput, "input and output are the same file");
    }
    Compressor compressor(*wav, level, progress);
    std::optional<tools::OutputFile> output;
    numbered(ErrorNumber::InvalidOutput, [&] { output.emplace(outputPath); });
    if (!output->canRewrite()) {
        throw MacError(ErrorNumber::InvalidOutput, "the output must be a file");
    }
    numbered(ErrorNumber::Write, [&] {
        const auto audioBytes = wav->audioBytes();
        if (input->size() && audioBytes && *audioBytes > 0 && compressor.isCertain(*audioBytes)) {
            compressor.writeDirectly(*output, *audioBytes);
        } else {
            compressor.writeSpooled(*output, folderOf(outputPath));
        }
        output->commit();
    });
}

} // namespace kruv::mac
