// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The tracks of an audio disc by the names of their files.
namespace kruv::CdTracks {

/// Track number of a file: what its name starts with, "01 Song.wav", or the desktop's "Track 1.wav". Nothing
/// where the name has none from 1 to 99.
std::optional<int> number(const QString &file);

/// In the order of their numbers; files without one first.
QStringList reNumberCdTracks(QStringList files);

/// Smallest and largest number, "3+12". Empty where no file has one.
QString getTrackNumberForExtract(const QStringList &files);

struct Range
{
    int first = 0;
    int last = 0;
};
/// The two halves of "3+12"; nothing where it isn't that, or isn't a rising range from 1 to 99.
std::optional<Range> range(const QString &text);

/// Names for the tracks of a disc that no file tells of, in the folder `device`.
QStringList namesFor(const QString &device, Range range);

/// First and last audio track of the disc in a drive, from its table of contents. Nothing where there is no
/// disc with audio. Waits for the drive: not for the main thread.
std::optional<Range> audioTracksIn(const QString &device);

} // namespace kruv::CdTracks
