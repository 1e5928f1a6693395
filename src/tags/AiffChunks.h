// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <tiostream.h>

namespace kruv {

/// True when the file is FORM AIFF or AIFC and its chunks lie one behind the other up to its end. Where they
/// don't (a cut file, a size never filled in), the tag library would write over the audio.
bool hasWholeAiffChunks(TagLib::IOStream &stream);

} // namespace kruv
