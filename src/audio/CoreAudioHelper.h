// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioFormatObject.h"

#include <QString>

namespace kruv {

/// Probes of an audio file's content; its name plays no part. They read the headers only, answer false for
/// what can't be opened or read, never throw, and may be called from any thread.
class CoreAudioHelper
{
public:
    static bool isAppleLossless(const QString &path);
    static bool isAIFC(const QString &path);
    /// Integer linear PCM of either byte order.
    static bool isAiffOrWav(const QString &path);
    /// Integer linear PCM, low byte first.
    static bool isWav(const QString &path);
    /// Integer linear PCM, high byte first.
    static bool isAiff(const QString &path);
    static bool is24BitAIFF(const QString &path);
    /// All zero for a file that can't be read.
    static AudioFormatObject getFormatInfo(const QString &path);
};

} // namespace kruv
