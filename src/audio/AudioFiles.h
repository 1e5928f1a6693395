// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioStreamFormat.h"

#include <QString>

#include <cstdint>
#include <memory>

namespace kruv {

struct AudioContent;
class ExtAudioFileReader;
class ExtAudioFileWriter;

/// Opens audio files of every kind. Every failure is an AudioError.
namespace AudioFiles {

/// A reader for whatever AudioContent knows. It gives the file's own client format until another is set.
std::unique_ptr<ExtAudioFileReader> open(const QString &path);
/// The same for one whose content has been looked at already.
std::unique_ptr<ExtAudioFileReader> open(const QString &path, const AudioContent &content);

/// The same by FFmpeg, where it can be trusted with what our own coders make: a second opinion on them.
std::unique_ptr<ExtAudioFileReader> openIndependently(const QString &path);

/// A writer. Erases a file that is there, but not before it is known that `format` can be written.
/// `expectedFrames` of input decide between the 32-bit and the 64-bit form of WAV.
std::unique_ptr<ExtAudioFileWriter> create(const QString &path, FileType fileType,
                                           const AudioStreamFormat &format, std::int64_t expectedFrames);

} // namespace AudioFiles

} // namespace kruv
