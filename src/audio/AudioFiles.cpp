// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioFiles.h"

#include "audio/AudioError.h"
#include "audio/CodecFileReader.h"
#include "audio/CodecFileWriter.h"
#include "audio/CoderStream.h"
#include "audio/ContentProbe.h"
#include "audio/FileDescriptor.h"
#include "audio/PcmFileReader.h"
#include "audio/PcmFileWriter.h"
#include "common/ToolError.h"

#include <QCoreApplication>

namespace kruv::AudioFiles {

namespace {

/// Plain PCM goes past FFmpeg: it would look into the samples and take DTS on a CD track for a film's sound.
std::unique_ptr<ExtAudioFileReader> openPcm(const QString &path, const AudioContent &content)
{
    try {
        return std::make_unique<PcmFileReader>(path);
    } catch (const tools::ToolError &notPcm) {
        return std::make_unique<CodecFileReader>(path, content, QString::fromUtf8(notPcm.what()));
    }
}

/// FFmpeg takes zeros for what is missing of Shorten, and refuses chunks before the audio; of Monkey's Audio
/// it decodes loud 24-bit stereo of the highest level wrongly. Nothing where our coders don't know the file.
std::unique_ptr<ExtAudioFileReader> openByOurCoders(const QString &path, const AudioContent &content)
{
    try {
        auto stream = content.container == AudioContent::Container::Shorten
                          ? CoderStream::shorten(path, content.start)
                          : CoderStream::monkeysAudio(path);
        return stream ? std::make_unique<PcmFileReader>(std::move(stream), FormatType::Other) : nullptr;
    } catch (const tools::ToolError &refusal) {
        throw AudioError(QStringLiteral("ExtAudioFileOpenURL failed dta?"),
                         QString::fromUtf8(refusal.what()));
    }
}

std::unique_ptr<ExtAudioFileReader> readerFor(const QString &path, const AudioContent &content)
{
    if (content.isPlainPcm()) {
        return openPcm(path, content);
    }
    std::unique_ptr<ExtAudioFileReader> reader;
    if (content.container == AudioContent::Container::Shorten ||
        content.container == AudioContent::Container::MonkeysAudio) {
        reader = openByOurCoders(path, content);
    }
    return reader ? std::move(reader) : std::make_unique<CodecFileReader>(path, content, QString());
}

} // namespace

std::unique_ptr<ExtAudioFileReader> openIndependently(const QString &path)
{
    constexpr std::uint32_t mostBits = 16; // of Monkey's Audio that FFmpeg decodes rightly at every level
    const AudioContent content = ContentProbe::of(path);
    if (content.container == AudioContent::Container::Shorten ||
        content.container == AudioContent::Container::MonkeysAudio) {
        try {
            auto reader = std::make_unique<CodecFileReader>(path, content, QString());
            if (reader->dataFormat().bitsPerChannel <= mostBits) {
                reader->setClientFormat(reader->dataFormat().clientFormat());
                return reader;
            }
        } catch (const AudioError &) {
            // It does not know the file. Whether that is the file's fault our coder tells.
        }
    }
    return open(path, content);
}

std::unique_ptr<ExtAudioFileReader> open(const QString &path)
{
    return open(path, ContentProbe::of(path));
}

std::unique_ptr<ExtAudioFileReader> open(const QString &path, const AudioContent &content)
{
    if (!content.isKnown()) {
        FileDescriptor::openForReading(path); // says why, where that is what is wrong
        throw AudioError(
            QStringLiteral("ExtAudioFileOpenURL failed typ?"),
            QCoreApplication::translate("kruv::AudioFiles", "This is no audio file of a known kind."));
    }
    std::unique_ptr<ExtAudioFileReader> reader = readerFor(path, content);
    reader->setClientFormat(reader->dataFormat().clientFormat());
    return reader;
}

std::unique_ptr<ExtAudioFileWriter> create(const QString &path, FileType fileType,
                                           const AudioStreamFormat &format, std::int64_t expectedFrames)
{
    if (fileType == FileType::M4af) {
        return std::make_unique<CodecFileWriter>(path, format);
    }
    return std::make_unique<PcmFileWriter>(path, fileType, format, expectedFrames);
}

} // namespace kruv::AudioFiles
