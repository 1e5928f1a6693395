// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// Whether a WAV file is one that every encoder reads by itself: its header states the length of its audio.
/// One that was written through a pipe, or whose recorder crashed, states none.
bool isPlainWav(const QString &path);

/// Whether a WAV file is of the kind that shntool knows: none of those with sizes of 64 bits.
bool isRiffWav(const QString &path);

} // namespace kruv
