// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/LossyCommandLine.h"

#include <algorithm>
#include <iterator>

namespace kruv::LossyCommandLine {

namespace {

/// lame's option for the rate mode, with its dashes.
QString modeOption(const QString &type)
{
    if (type == u"ABR") {
        return QStringLiteral("--abr");
    }
    return type == u"CBR" ? QStringLiteral("-b") : QStringLiteral("-V");
}

QString stereoWord(const Mp3Request &request)
{
    return request.jointStereo ? QStringLiteral("j") : QStringLiteral("s");
}

/// opusenc takes these frame sizes; any other stands for the longest.
QString frameSizeText(double milliseconds)
{
    constexpr double known[] = {2.5, 5.0, 10.0, 20.0, 40.0};
    const bool isKnown = std::ranges::find(known, milliseconds) != std::end(known);
    return isKnown ? QString::number(milliseconds) : QStringLiteral("60");
}

} // namespace

QStringList lame(const Mp3Request &request, const QString &source, const QString &output)
{
    return {QStringLiteral("--brief"),
            QStringLiteral("-m"),
            stereoWord(request),
            QStringLiteral("-q"),
            QString::number(request.qValue),
            modeOption(request.type),
            QString::number(request.level),
            source,
            output};
}

QStringList shntoolToLame(const Mp3Request &request, const QString &source, const QString &folder,
                          const QString &output)
{
    const QString encoder = QStringLiteral("cust ext=mp3 lame -m %1 -q %2 %3 %4 - %f")
                                .arg(stereoWord(request))
                                .arg(request.qValue)
                                .arg(modeOption(request.type))
                                .arg(request.level);
    return {QStringLiteral("conv"),
            QStringLiteral("-P"),
            QStringLiteral("pct"),
            QStringLiteral("-O"),
            QStringLiteral("never"),
            QStringLiteral("-o"),
            encoder,
            QStringLiteral("-d"),
            folder,
            QStringLiteral("-n"),
            output,
            source};
}

QStringList opusenc(const OpusRequest &request, const QString &source, const QString &output)
{
    QString mode = QStringLiteral("--vbr");
    if (request.type == u"CBR") {
        mode = QStringLiteral("--hard-cbr");
    } else if (request.type == u"VBR Constrained") {
        mode = QStringLiteral("--cvbr");
    }
    QStringList arguments{mode, QStringLiteral("--bitrate"), QString::number(request.bitRate),
                          QStringLiteral("--framesize"), frameSizeText(request.frameSize)};
    if (!request.title.isEmpty()) {
        arguments << QStringLiteral("--title") << request.title;
    }
    if (!request.artist.isEmpty()) {
        arguments << QStringLiteral("--artist") << request.artist;
    }
    return arguments << source << output;
}

} // namespace kruv::LossyCommandLine
