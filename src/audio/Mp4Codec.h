// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioContent.h"

namespace kruv {

class FileHead;

namespace Mp4Codec {

/// What the first sound track of an MP4 or QuickTime file is coded in; Codec::Unknown without one.
AudioContent::Codec in(FileHead &file);

} // namespace Mp4Codec

} // namespace kruv
