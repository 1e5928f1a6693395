// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/CoreAudioHelper.h"

#include "audio/AudioError.h"
#include "audio/ExtAudioFileReader.h"
#include "audio/FileDescriptor.h"

#include <QLoggingCategory>

#include <array>
#include <cstring>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(audioLog, "kruv.audio", QtWarningMsg)

/// A format of zeros for a file that can't be read.
AudioStreamFormat dataFormatOf(const QString &path)
{
    try {
        return ExtAudioFileReader::open(path)->dataFormat();
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
    return dataFormatOf(path).formatType == FormatType::AppleLossless;
}

bool CoreAudioHelper::isAIFC(const QString &path)
{
    try {
        FileDescriptor file = FileDescriptor::openForReading(path);
        std::array<std::uint8_t, 12> start{};
        return file.read(start) == static_cast<std::int64_t>(start.size()) &&
               std::memcmp(start.data(), "FORM", 4) == 0 && std::memcmp(start.data() + 8, "AIFC", 4) == 0;
    } catch (const AudioError &failure) {
        qCInfo(audioLog, "exception: %s", failure.what());
        return false;
    }
}

bool CoreAudioHelper::isAiffOrWav(const QString &path)
{
    return isIntegerPcm(dataFormatOf(path));
}

bool CoreAudioHelper::isWav(const QString &path)
{
    const AudioStreamFormat format = dataFormatOf(path);
    return isIntegerPcm(format) && !isBigEndian(format);
}

bool CoreAudioHelper::isAiff(const QString &path)
{
    const AudioStreamFormat format = dataFormatOf(path);
    return isIntegerPcm(format) && isBigEndian(format);
}

bool CoreAudioHelper::is24BitAIFF(const QString &path)
{
    const AudioStreamFormat format = dataFormatOf(path);
    return isIntegerPcm(format) && isBigEndian(format) && format.bitsPerChannel == 24;
}

AudioFormatObject CoreAudioHelper::getFormatInfo(const QString &path)
{
    try {
        const auto file = ExtAudioFileReader::open(path);
        const AudioStreamFormat &format = file->dataFormat();
        return {static_cast<std::int32_t>(format.sampleRate),
                static_cast<std::int32_t>(format.bitsPerChannel), static_cast<std::int32_t>(format.channels),
                file->lengthInFrames()};
    } catch (const std::exception &) {
        return {};
    }
}

} // namespace kruv
