// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioContent.h"

namespace kruv {

class FileHead;

/// What the first audio of a container that can hold many things is coded in; Codec::Unknown where there is
/// no audio in it, or no sense.
namespace ContainedCodec {

/// RIFF and its kin, AIFF-C, CAF, MP4 and ASF, which begin with the file.
AudioContent::Codec in(FileHead &file, AudioContent::Container container);
AudioContent::Codec inOgg(FileHead &file, std::int64_t start);

} // namespace ContainedCodec

} // namespace kruv
