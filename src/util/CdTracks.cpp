// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/CdTracks.h"

#include "base/PathNames.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace kruv::CdTracks {

namespace {

constexpr int lastTrack = 99; // of any disc

bool isTrack(int number)
{
    return number >= 1 && number <= lastTrack;
}

bool isAudio(int drive, int track)
{
    cdrom_tocentry entry{};
    entry.cdte_track = static_cast<unsigned char>(track);
    entry.cdte_format = CDROM_MSF;
    return ioctl(drive, CDROMREADTOCENTRY, &entry) == 0 && (entry.cdte_ctrl & CDROM_DATA_TRACK) == 0;
}

std::optional<Range> audioTracksOf(int drive)
{
    cdrom_tochdr contents{};
    if (ioctl(drive, CDROMREADTOCHDR, &contents) != 0) {
        return std::nullopt;
    }
    Range range;
    for (int track = contents.cdth_trk0; track <= contents.cdth_trk1; ++track) {
        if (isAudio(drive, track)) {
            range.first = range.first == 0 ? track : range.first;
            range.last = track;
        }
    }
    return range.first == 0 ? std::nullopt : std::optional(range);
}

} // namespace

std::optional<int> number(const QString &file)
{
    static const QString desktopPrefix = QStringLiteral("Track ");
    QString name = PathNames::nameWithoutExtension(file);
    if (name.startsWith(desktopPrefix)) {
        name.remove(0, desktopPrefix.size());
    }
    const auto end = std::find_if_not(name.cbegin(), name.cend(),
                                      [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
    const int value = QStringView(name.cbegin(), end).toInt();
    return isTrack(value) ? std::optional(value) : std::nullopt;
}

QStringList reNumberCdTracks(QStringList files)
{
    std::ranges::stable_sort(files, {}, [](const QString &file) { return number(file).value_or(0); });
    return files;
}

QString getTrackNumberForExtract(const QStringList &files)
{
    int first = lastTrack + 1;
    int last = 0;
    for (const QString &file : files) {
        const int value = number(file).value_or(0);
        first = value > 0 ? std::min(first, value) : first;
        last = std::max(last, value);
    }
    return last == 0 ? QString() : QStringLiteral("%1+%2").arg(first).arg(last);
}

std::optional<Range> range(const QString &text)
{
    const QStringList halves = text.split(u'+');
    const Range found{halves.value(0).toInt(), halves.value(1).toInt()};
    const bool isRange =
        halves.size() == 2 && isTrack(found.first) && isTrack(found.last) && found.first <= found.last;
    return isRange ? std::optional(found) : std::nullopt;
}

QStringList namesFor(const QString &device, Range range)
{
    QStringList names;
    for (int track = range.first; track <= range.last; ++track) {
        names.append(QStringLiteral("%1/%2 Audio Track.wav").arg(device).arg(track, 2, 10, QLatin1Char('0')));
    }
    return names;
}

std::optional<Range> audioTracksIn(const QString &device)
{
    // Not waiting for a medium: a drive without one answers at once.
    const int drive = open(QFile::encodeName(device).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (drive < 0) {
        return std::nullopt;
    }
    const auto range = audioTracksOf(drive);
    close(drive);
    return range;
}

} // namespace kruv::CdTracks
