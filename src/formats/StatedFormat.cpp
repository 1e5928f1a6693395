// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/StatedFormat.h"

#include "audio/CoreAudioHelper.h"

#include <QFile>

#include <audioproperties.h>
#include <fileref.h>

namespace kruv {

AudioFormatObject statedFormat(const QString &path)
{
    AudioFormatObject format = CoreAudioHelper::getFormatInfo(path);
    if (format.totalSamples > 0) {
        return format;
    }
    const TagLib::FileRef file(QFile::encodeName(path).constData());
    if (const TagLib::AudioProperties *properties = file.isNull() ? nullptr : file.audioProperties()) {
        constexpr std::int64_t perSecond = 1000;
        format.sampleRate = properties->sampleRate();
        format.channels = properties->channels();
        format.totalSamples =
            std::int64_t{properties->lengthInMilliseconds()} * properties->sampleRate() / perSecond;
    }
    return format;
}

} // namespace kruv
