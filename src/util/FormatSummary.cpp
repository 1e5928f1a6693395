// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/FormatSummary.h"

#include "audio/CoreAudioHelper.h"
#include "base/PathNames.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "tags/FlacTagHelper.h"

#include <QLocale>

#include <cmath>

namespace kruv {

AudioFormatObject formatSummary(const QString &path)
{
    return Formats::ofType(PathNames::fileType(path)) == &flacFormat ? FlacTagHelper().getFormatInfo(path)
                                                                     : CoreAudioHelper::getFormatInfo(path);
}

bool haveSameFormat(const AudioFormatObject &one, const AudioFormatObject &other)
{
    return one.sampleRate == other.sampleRate && one.bitsPerChannel == other.bitsPerChannel &&
           one.channels == other.channels;
}

QString parseTimeAsString(double seconds)
{
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    const qint64 whole = std::llround(seconds);
    const auto twoDigits = [](qint64 number) {
        return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
    };
    const QString rest = u':' + twoDigits(whole % minute);
    return whole < hour ? QString::number(whole / minute) + rest
                        : QString::number(whole / hour) + u':' + twoDigits(whole % hour / minute) + rest;
}

QString parseSizeFromTimeAsString(double seconds, int sampleRate, int bitDepth, int numChannels)
{
    constexpr double bitsPerByte = 8.0;
    constexpr qint64 gigabyte = 1'000'000'000;
    const qint64 bytes = std::llround(seconds * sampleRate * numChannels * bitDepth / bitsPerByte);
    return QLocale().formattedDataSize(bytes, bytes < gigabyte ? 0 : 2, QLocale::DataSizeSIFormat);
}

} // namespace kruv
