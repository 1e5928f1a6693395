// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

struct Format;

/// Whether a format can hold a file's audio.
namespace AudioLimitsCheck {

/// Throws std::runtime_error, in a sentence for a person, where files of `target` can't hold what `source`
/// says of its audio. What it doesn't say is let through.
void require(const Format &target, const QString &source);

} // namespace AudioLimitsCheck
} // namespace kruv
