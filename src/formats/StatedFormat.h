// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioFormatObject.h"

#include <QString>

namespace kruv {

/// What a file says of its audio, whatever its format: by the conversion service where that reads it, else by
/// the tag library. Lengths of the latter are known to the millisecond. All zero where nothing tells it, as
/// for Shorten. Any thread.
AudioFormatObject statedFormat(const QString &path);

} // namespace kruv
