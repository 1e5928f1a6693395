// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/DemoAlbum.h"

#include "base/WholeFile.h"
#include "tags/TagLibTagsHelper.h"
#include "tags/TagsObject.h"

#include <QCoreApplication>
#include <QDate>
#include <QImage>
#include <QtEndian>

#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <stdexcept>

namespace kruv::DemoAlbum {

namespace {

struct DemoText
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DemoAlbum)
};

constexpr int sampleRate = 44100;
constexpr int channels = 2;
constexpr int bytesPerSample = 2;

struct Track
{
    const char *title;
    int seconds;
    /// Chord tones in hertz.
    std::array<double, 4> chord;
};

constexpr Track tracks[] = {
    {"Morning Tape", 6, {220.0, 277.18, 329.63, 440.0}},
    {"Two Microphones", 7, {196.0, 246.94, 293.66, 392.0}},
    {"Last Train Home", 8, {174.61, 220.0, 261.63, 349.23}},
};

template <typename Integer> void appendBigEndian(QByteArray &bytes, Integer value)
{
    const Integer swapped = qToBigEndian(value);
    bytes.append(reinterpret_cast<const char *>(&swapped), sizeof swapped);
}

/// A sample rate as the 80-bit extended number that AIFF wants.
QByteArray extendedRate(quint32 rate)
{
    int exponent = 31;
    while ((rate & 0x80000000U) == 0) {
        rate <<= 1;
        --exponent;
    }
    QByteArray bytes;
    appendBigEndian<quint16>(bytes, static_cast<quint16>(16383 + exponent));
    appendBigEndian<quint32>(bytes, rate);
    appendBigEndian<quint32>(bytes, 0);
    return bytes;
}

/// Plucked notes, one after the other, each decaying; a little apart in the two channels.
double sampleAt(const Track &track, double time, int channel)
{
    constexpr double noteLength = 0.25;
    constexpr double decay = 3.0;
    double sum = 0.0;
    const auto newest = static_cast<int>(time / noteLength);
    for (int note = std::max(0, newest - 7); note <= newest; ++note) {
        const double age = time - note * noteLength;
        const double pitch = track.chord[static_cast<std::size_t>(note * 3 % 4)] * (note % 8 < 4 ? 1.0 : 2.0);
        const double phase = 2.0 * std::numbers::pi * pitch * age + 0.3 * channel;
        const double sine = std::sin(phase);
        const double second = 2.0 * sine * std::cos(phase);
        const double third = sine * (3.0 - 4.0 * sine * sine);
        sum += std::exp(-decay * age) * (sine + 0.3 * second + 0.1 * third);
    }
    return 0.25 * sum;
}

QByteArray audioOf(const Track &track)
{
    const int frames = track.seconds * sampleRate;
    QByteArray audio;
    audio.reserve(static_cast<qsizetype>(frames) * channels * bytesPerSample);
    for (int frame = 0; frame < frames; ++frame) {
        const double time = static_cast<double>(frame) / sampleRate;
        const double fade = std::min(1.0, (track.seconds - time) / 1.5);
        for (int channel = 0; channel < channels; ++channel) {
            appendBigEndian<qint16>(
                audio, static_cast<qint16>(std::lround(32000.0 * fade * sampleAt(track, time, channel))));
        }
    }
    return audio;
}

QByteArray aiffOf(const QByteArray &audio)
{
    QByteArray common;
    appendBigEndian<quint16>(common, channels);
    appendBigEndian<quint32>(common, static_cast<quint32>(audio.size() / channels / bytesPerSample));
    appendBigEndian<quint16>(common, 8 * bytesPerSample);
    common += extendedRate(sampleRate);

    QByteArray body("AIFFCOMM");
    appendBigEndian<quint32>(body, static_cast<quint32>(common.size()));
    body += common + "SSND";
    constexpr quint32 offsetAndBlockSize = 8;
    appendBigEndian<quint32>(body, static_cast<quint32>(audio.size()) + offsetAndBlockSize);
    body += QByteArray(offsetAndBlockSize, '\0') + audio;

    QByteArray file("FORM");
    appendBigEndian<quint32>(file, static_cast<quint32>(body.size()));
    return file + body;
}

QImage cover()
{
    constexpr int side = 300;
    QImage image(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const double distance = std::hypot(x - side / 2.0, y - side / 2.0);
            const bool groove =
                distance < 130.0 && distance > 45.0 && static_cast<int>(distance / 4.0) % 2 == 0;
            const bool label = distance <= 45.0 && distance > 6.0;
            image.setPixel(x, y,
                           label    ? qRgb(214, 92, 62)
                           : groove ? qRgb(46, 52, 64)
                                    : qRgb(30 + y / 8, 34, 60 + x / 8));
        }
    }
    return image;
}

std::shared_ptr<TagsObject> tagsOf(int index)
{
    auto tags = std::make_shared<TagsObject>();
    tags->setTitleText(QString::fromLatin1(tracks[index].title));
    tags->setArtistText(QStringLiteral("The Demonstration"));
    tags->setAlbumText(QStringLiteral("Kruv Demo"));
    tags->setGenreText(QStringLiteral("Electronic"));
    tags->setTrackText(QString::number(index + 1));
    tags->setTrackTotalText(QString::number(std::size(tracks)));
    tags->setYearText(QString::number(QDate::currentDate().year()));
    tags->setAlbumArt(cover());
    return tags;
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    const QString problem = WholeFile::write(path, bytes);
    if (!problem.isEmpty()) {
        throw std::runtime_error(QStringLiteral("%1: %2").arg(path, problem).toStdString());
    }
}

} // namespace

QStringList make(const QString &folder)
{
    QStringList made;
    for (int index = 0; index < static_cast<int>(std::size(tracks)); ++index) {
        const QString path = QStringLiteral("%1/%2 %3.aiff")
                                 .arg(folder)
                                 .arg(index + 1, 2, 10, QLatin1Char('0'))
                                 .arg(QLatin1StringView(tracks[index].title));
        writeFile(path, aiffOf(audioOf(tracks[index])));
        if (!TagLibTagsHelper().writeTagsForAIFFFile(path, *tagsOf(index))) {
            throw std::runtime_error(
                DemoText::tr("%1: the tags could not be written").arg(path).toStdString());
        }
        made.append(path);
    }
    return made;
}

} // namespace kruv::DemoAlbum
