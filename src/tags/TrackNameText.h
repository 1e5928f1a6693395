// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/TrimCharsObject.h"

#include <QString>
#include <QStringList>

/// The text of track names, one a line, and of the track lists that people keep beside their recordings.
namespace kruv::TrackNameText {

/// The same text with "\n" in place of every other line break.
QString withPlainLineBreaks(const QString &text);

/// Each line that has at least `trim.number` characters loses that many at the chosen end.
QString trimmed(const QString &text, const TrimCharsObject &trim);

/// The names in a track list: lines that begin with a track number, from the first number 1 on, less number
/// and trailing length. A number alone gives "(blank)". Dates (month, day and year) are passed over.
QStringList namesInTrackList(const QString &trackList);

} // namespace kruv::TrackNameText
