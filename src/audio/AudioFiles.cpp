// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioFiles.h"

#include "audio/AudioError.h"
#include "audio/CodecFileReader.h"
#include "audio/CodecFileWriter.h"
#include "audio/ContentProbe.h"
#include "audio/FileDescriptor.h"
#include "audio/PcmFileReader.h"
#include "audio/PcmFileWriter.h"
#include "common/ToolError.h"

#include <QCoreApplication>

namespace kruv::AudioFiles {

namespace {

std::unique_ptr<ExtAudioFileReader> readerFor(const QString &path, const AudioContent &content)
{
    if (content.isPlainPcm()) {
        // Plain PCM goes past FFmpeg: it would look into the samples and take DTS on a CD track for a film's
        // sound.
        try {
            return std::make_unique<PcmFileReader>(path);
        } catch (const tools::ToolError &notPcm) {
            return std::make_unique<CodecFileReader>(path, content, QString::fromUtf8(notPcm.what()));
        }
    }
    return std::make_unique<CodecFileReader>(path, content, QString());
}

} // namespace

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
