// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioStreamFormat.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

/// Where files are split: cue sheets, or lists with a point a line.
namespace kruv::SplitPositions {

/// Whether `cuts`, in frames of audio of that format, lie where the cue sheet or list of split points says; a
/// point at the beginning is none. True also for a text that holds something else, which the tool may
/// understand.
bool fit(const std::vector<std::int64_t> &cuts, const QByteArray &text, const AudioStreamFormat &format);

/// Why one file can't be split by this text, a sentence for a person, where the tool would say little; else
/// empty.
QString problemIn(const QString &text);

} // namespace kruv::SplitPositions
