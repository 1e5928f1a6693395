// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMap>
#include <QString>

/// Names for the files of a split, from the titles in its cue sheet.
namespace kruv::SplitTitles {

/// From the name that shntool gives a track ("split-track01.wav") to the one that it is to have
/// ("01 Title.wav"). Tracks without a title are not in it. Empty for a text that is no cue sheet.
QMap<QString, QString> trackTitleMap(const QString &cueSheet, const QString &extension);

/// A file name of one path component and at most 255 bytes for that track.
QString fileName(int track, const QString &title, const QString &extension);

} // namespace kruv::SplitTitles
