// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// What the sources of a job are told of. Any thread.
namespace kruv::SourceCheck {

/// Throws std::runtime_error, a sentence, where one of `files` was cut short or holds no audio at all.
/// Returns what a person should know of the others though it stops no job, a sentence each.
QStringList inspect(const QStringList &files);

/// For FLAC whose tool stumbles over tags around the audio: what a person should know of that, a sentence,
/// where the audio itself is sound to its end. Empty where it is not, where there are no such tags, and where
/// `goesOn` ended it.
QString remarkOnSound(const QString &file, const std::function<bool()> &goesOn);

/// Whether the header of PCM tells its length, and truly. Of what is no PCM, and of what can't be opened,
/// true.
bool tellsLength(const QString &file);

/// What is wrong with the first of `files` that can't be decoded to its end, a sentence. Empty where all can,
/// where a file is no audio of a known kind, and where `goesOn` ended it.
QString complaint(const QStringList &files, const std::function<bool()> &goesOn);

} // namespace kruv::SourceCheck
