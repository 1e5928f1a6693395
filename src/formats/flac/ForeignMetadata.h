// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// The chunks of WAV and AIFF files that FLAC files keep, each in an application block (RFC 9639,
/// section 8.4) of the id "riff" or "aiff".
namespace kruv::ForeignMetadata {

/// Throws std::runtime_error, in words for a person, where the FLAC file lacks a byte of a chunk that
/// `source` holds beside its audio.
void requireAllOf(const QString &source, const QString &flac);

} // namespace kruv::ForeignMetadata
