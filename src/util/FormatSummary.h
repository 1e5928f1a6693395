// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioFormatObject.h"

#include <QString>

namespace kruv {

/// The format of a sound file as its header tells it; zeros where it can't be read. Blocks (FLAC files are
/// read by a tool): not for the main thread.
AudioFormatObject formatSummary(const QString &path);

/// Whether two files may share a disc: sample rate, bit depth and number of channels are the same.
bool haveSameFormat(const AudioFormatObject &one, const AudioFormatObject &other);

/// "4:05", and from an hour on "1:02:03". Rounded to whole seconds.
QString parseTimeAsString(double seconds);
/// The size of that much linear PCM, "702 MB"; `sampleRate` in Hz, `bitDepth` in bits.
QString parseSizeFromTimeAsString(double seconds, int sampleRate, int bitDepth, int numChannels);

} // namespace kruv
