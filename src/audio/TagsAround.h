// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <functional>

/// ID3 and APEv2 tags that some programs put before and behind FLAC, whose own tags are elsewhere. Its tools
/// stumble over them, or drop them without a word. Any thread; what can't be read is an AudioError.
namespace kruv::TagsAround {

/// "an ID3v2 tag before its audio, an ID3v1 tag behind its audio"; empty for what is no FLAC, or only that.
QString inWords(const QString &file);

/// Writes `file` without them. False where `goesOn` ended it. Throws std::runtime_error where it can't be
/// written.
bool copyWithout(const QString &file, const QString &copy, const std::function<bool()> &goesOn);

} // namespace kruv::TagsAround
