// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"

/// The settings of FLAC, which every road to it takes.
namespace kruv::FlacOptions {

extern const FormatOption level;
/// Outside the streamable subset; the level is then the tool's own.
extern const FormatOption lax;
extern const FormatOption verify;
extern const FormatOption keepForeignMetadata;
/// A list of the outputs' fingerprints, written when all are made.
extern const FormatOption fingerprints;
/// Of decoding.
extern const FormatOption throughErrors;

} // namespace kruv::FlacOptions
