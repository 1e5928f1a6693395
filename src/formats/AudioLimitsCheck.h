// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

struct AudioFormatObject;
struct Format;

/// Whether a format can hold a file's audio.
namespace AudioLimitsCheck {

/// Throws std::runtime_error, in a sentence for a person, where files of `target` can't hold the audio of
/// `source` as it states it. What it doesn't say is let through.
void require(const Format &target, const QString &source, const AudioFormatObject &audio);

} // namespace AudioLimitsCheck
} // namespace kruv
