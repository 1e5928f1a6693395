// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/CoreAudioHelper.h"

#include "audio/AudioError.h"
#include "audio/AudioFiles.h"
#include "audio/ContentProbe.h"
#include "audio/ExtAudioFileReader.h"
#include "audio/FileHead.h"

#include <QLoggingCategory>

#include <exception>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(audioLog, "kruv.audio", QtWarningMsg)

/// A format of zeros for a file that can't be read, or is another codec's.
AudioStreamFormat dataFormatOf(const QString &path, AudioContent::Codec codec)
{
    try {
        const AudioContent content = ContentProbe::of(path);
        return content.codec == codec ? AudioFiles::open(path, content)->dataFormat() : AudioStreamFormat();
    } catch (const std::exception &) {
        return {};
    }
}

bool isIntegerPcm(const AudioStreamFormat &format)
{
    constexpr std::uint32_t either = AudioStreamFormat::isSignedInteger | AudioStreamFormat::isPacked;
    return format.formatType == FormatType::LinearPcm &&
           (format.formatFlags & ~AudioStreamFormat::isBigEndian) == either;
}

bool isBigEndian(const AudioStreamFormat &format)
{
    return (format.formatFlags & AudioStreamFormat::isBigEndian) != 0;
}

} // namespace

bool CoreAudioHelper::isAppleLossless(const QString &path)
{
    return dataFormatOf(path, AudioContent::Codec::AppleLossless).formatType == FormatType::AppleLossless;
}

bool CoreAudioHelper::isAIFC(const QString &path)
{
    try {
        FileHead file(FileDescriptor::openForReading(path));
        return file.has(0, "FORM") && file.has(8, "AIFC");
    } catch (const AudioError &failure) {
        qCInfo(audioLog, "exception: %s", failure.what());
        return false;
    }
}

bool CoreAudioHelper::isAiffOrWav(const QString &path)
{
    return isIntegerPcm(dataFormatOf(path, AudioContent::Codec::Pcm));
}

bool CoreAudioHelper::isWav(const QString &path)
{
    const AudioStreamFormat format = dataFormatOf(path, AudioContent::Codec::Pcm);
    return isIntegerPcm(format) && !isBigEndian(format);
}

bool CoreAudioHelper::isAiff(const QString &path)
{
    const AudioStreamFormat format = dataFormatOf(path, AudioContent::Codec::Pcm);
    return isIntegerPcm(format) && isBigEndian(format);
}

bool CoreAudioHelper::is24BitAIFF(const QString &path)
{
    const AudioStreamFormat format = dataFormatOf(path, AudioContent::Codec::Pcm);
    return isIntegerPcm(format) && isBigEndian(format) && format.sampleWidth() == 24;
}

AudioFormatObject CoreAudioHelper::getFormatInfo(const QString &path)
{
    try {
        const auto file = AudioFiles::open(path);
        const AudioStreamFormat &format = file->dataFormat();
        return {static_cast<std::int32_t>(format.sampleRate),
                static_cast<std::int32_t>(format.bitsPerChannel), static_cast<std::int32_t>(format.channels),
                file->lengthInFrames(), format.isFloatingPoint()};
    } catch (const std::exception &) {
        return {};
    }
}

} // namespace kruv
