// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "common/InputStream.h"

#include <QString>

#include <cstdint>
#include <memory>

/// Files of our own coders as the PCM files that are in them, decoded while they are read. Damage is a
/// ToolError, at the latest at the stream's end.
namespace kruv::CoderStream {

/// `start` is where the Shorten stream begins in the file.
std::unique_ptr<tools::InputStream> shorten(const QString &path, std::int64_t start);

/// Nothing where the file is of a version older than our coder reads. The WAV header is not the file's own
/// but states what the audio is.
std::unique_ptr<tools::InputStream> monkeysAudio(const QString &path);

} // namespace kruv::CoderStream
