// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ExtAudioFileReader.h"

#include "audio/AudioError.h"
#include "audio/CodecFileReader.h"
#include "audio/FileDescriptor.h"
#include "audio/PcmFileReader.h"
#include "common/ToolError.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kruv {

namespace {

enum class Kind { Pcm, Codec, Unknown };

/// Files of other kinds are many where a whole folder is looked through, and none of FFmpeg's business.
Kind kindOf(std::string_view start)
{
    const std::string_view first = start.substr(0, 4);
    if (first == "RIFF" || first == "RF64" || first == "FORM") {
        return Kind::Pcm;
    }
    if (first == "BW64") {
        return Kind::Codec;
    }
    constexpr std::array<std::string_view, 6> boxes{"ftyp", "moov", "mdat", "free", "skip", "wide"};
    const bool isBox = start.size() >= 8 && std::ranges::count(boxes, start.substr(4, 4)) > 0;
    return isBox ? Kind::Codec : Kind::Unknown;
}

Kind kindOfFile(const QString &path)
{
    std::array<std::uint8_t, 8> start{};
    const std::int64_t got = FileDescriptor::openForReading(path).read(start);
    return kindOf({reinterpret_cast<const char *>(start.data()),
                   static_cast<std::size_t>(std::max<std::int64_t>(got, 0))});
}

} // namespace

std::unique_ptr<ExtAudioFileReader> ExtAudioFileReader::open(const QString &path)
{
    switch (kindOfFile(path)) {
    case Kind::Pcm:
        // Plain PCM goes past FFmpeg: it would look into the samples and take DTS on a CD track for a film's
        // sound.
        try {
            return std::make_unique<PcmFileReader>(path);
        } catch (const tools::ToolError &notPcm) {
            return std::make_unique<CodecFileReader>(path, QString::fromUtf8(notPcm.what()));
        }
    case Kind::Codec:
        return std::make_unique<CodecFileReader>(path, QString());
    case Kind::Unknown:
        break;
    }
    throw AudioError(QStringLiteral("ExtAudioFileOpenURL failed typ?"),
                     QStringLiteral("This is no WAV, AIFF or MPEG-4 file."));
}

void ExtAudioFileReader::setClientFormat(const AudioStreamFormat &format)
{
    const std::uint32_t width = format.bitsPerChannel;
    if (width % 8 != 0 || width < 8 || width > 32 ||
        format.bytesPerFrame != width / 8 * m_dataFormat.channels) {
        throw AudioError(
            QStringLiteral("ExtAudioFileSetProperty inFile, kExtAudioFileProperty_ClientDataFormat failed"),
            QStringLiteral("Samples of %1 bits can't be converted.").arg(width));
    }
    m_clientFormat = format;
}

} // namespace kruv
