// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/PcmFileWriter.h"

#include "audio/AudioError.h"
#include "audio/PcmHeaders.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kruv {

namespace {

// Largest header of all forms, pad byte included, and sizes that readers take for "not known".
constexpr std::int64_t largestData = 0xFFFFFF00 - 128;

[[noreturn]] void cannotHold(const QString &why)
{
    throw AudioError(QStringLiteral("ExtAudioFileCreateWithURL failed fmt?"), why);
}

/// Throws where no WAV or AIFF file can be like this.
const AudioStreamFormat &checked(const AudioStreamFormat &format)
{
    const std::uint32_t width = format.bitsPerChannel;
    if (width % 8 != 0 || width < 8 || width > 32 || format.bytesPerFrame != width / 8 * format.channels) {
        cannotHold(PcmFileWriter::tr("Samples of %1 bits can't be written.").arg(width));
    }
    if (format.channels == 0 || format.bytesPerFrame > 0xFFFF || format.sampleRate == 0) {
        cannotHold(PcmFileWriter::tr("%1 channels can't be written.").arg(format.channels));
    }
    return format;
}

template <std::size_t Size>
void reverseEach(const std::uint8_t *source, std::uint8_t *target, std::size_t bytes)
{
    for (std::size_t i = 0; i < bytes; i += Size) {
        std::array<std::uint8_t, Size> sample{};
        std::memcpy(sample.data(), source + i, Size);
        std::reverse(sample.begin(), sample.end());
        std::memcpy(target + i, sample.data(), Size);
    }
}

} // namespace

PcmFileWriter::PcmFileWriter(const QString &path, FileType fileType, const AudioStreamFormat &format,
                             std::int64_t expectedFrames)
    : m_fileType(fileType)
    , m_format(checked(format))
    , m_wide(fileType == FileType::Wave && expectedFrames * m_format.bytesPerFrame > largestData)
    , m_file([&] {
        if (!fits(expectedFrames)) {
            cannotHold(tr("AIFF files end at 4 GiB; this one would be longer."));
        }
        return FileDescriptor::create(path);
    }())
{
    check(m_file.write(header()));
}

bool PcmFileWriter::fits(std::int64_t frames) const
{
    return m_wide || frames * m_format.bytesPerFrame <= largestData;
}

void PcmFileWriter::setClientFormat(const AudioStreamFormat &format)
{
    if (format.bytesPerFrame != m_format.bytesPerFrame) {
        throw AudioError(
            QStringLiteral("ExtAudioFileSetProperty outFile, kExtAudioFileProperty_ClientDataFormat failed"));
    }
    ExtAudioFileWriter::setClientFormat(format);
}

std::vector<std::uint8_t> PcmFileWriter::header() const
{
    return m_fileType == FileType::Wave ? PcmHeaders::wav(m_format, m_frames, m_wide)
                                        : PcmHeaders::aiff(m_format, m_frames);
}

std::span<const std::uint8_t> PcmFileWriter::inFileOrder(std::span<const std::uint8_t> frames)
{
    const bool isWave = m_fileType == FileType::Wave;
    const std::uint32_t width = m_format.bitsPerChannel;
    if (isWave ? width > 8 : width == 8) {
        return frames;
    }
    m_scratch.resize(frames.size());
    switch (width) {
    case 8: // only WAV's bytes are unsigned
        std::transform(frames.begin(), frames.end(), m_scratch.begin(),
                       [](std::uint8_t sample) { return static_cast<std::uint8_t>(sample ^ 0x80); });
        break;
    case 16:
        reverseEach<2>(frames.data(), m_scratch.data(), frames.size());
        break;
    case 24:
        reverseEach<3>(frames.data(), m_scratch.data(), frames.size());
        break;
    default:
        reverseEach<4>(frames.data(), m_scratch.data(), frames.size());
    }
    return m_scratch;
}

void PcmFileWriter::write(std::span<const std::uint8_t> frames)
{
    m_frames += static_cast<std::int64_t>(frames.size() / m_format.bytesPerFrame);
    if (!fits(m_frames)) {
        throw AudioError(QStringLiteral("ExtAudioFileWrite failed"),
                         tr("The audio is longer than the source states."));
    }
    check(m_file.write(inFileOrder(frames)));
}

void PcmFileWriter::finish()
{
    if (m_frames * m_format.bytesPerFrame % 2 != 0) {
        check(m_file.write(std::array<std::uint8_t, 1>{}));
    }
    check(static_cast<int>(std::min<std::int64_t>(m_file.seek(0, SEEK_SET), 0)));
    check(m_file.write(header()));
    check(m_file.close());
}

} // namespace kruv
