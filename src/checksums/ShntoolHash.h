// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

/// Reader of what "shntool hash" prints: progress on one stream, hash lines on another, both on one pipe.
namespace kruv::ShntoolHash {

/// Percentage in the line that the tool is drawing ("Hashing [a.wav] (0:11.09) :  37% ").
std::optional<double> percentage(QStringView line);

/// Name in a line that begins with "Hashing [", or a null string.
QString currentName(QStringView line);

/// A hash, two blanks, "[shntool]", two blanks, a name.
bool isHashLine(QStringView line);

/// The files of a whole run that could not be decoded to their end; what the tool hashed of them is not their
/// audio.
QStringList unsound(const QString &text);

/// The hash lines of a whole run, in the order they were printed, less those of unsound files.
QStringList hashLines(const QString &text);

/// What the tool complained about, a line each, without repetitions. Of unsound files only what is wrong with
/// them.
QStringList complaints(const QString &text);

/// Splits names so that the hash lines of each run fit into one of the tool's writes. A run that prints more
/// has its hash lines cut anywhere, with progress in between.
QList<QStringList> runs(const QStringList &names);

} // namespace kruv::ShntoolHash
