// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioContent.h"

#include <QString>

namespace kruv::ContentProbe {

/// Looks at a few kilobytes of a file; its name plays no part. Unknown in every part for what is no regular
/// file, can't be read or is no audio. Never throws, any thread.
AudioContent of(const QString &path);

} // namespace kruv::ContentProbe
