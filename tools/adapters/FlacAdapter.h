// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"

#include <functional>

namespace kruv::adapters {

/// What `flac` is to be called with.
/// - Decoding: --keep-foreign-metadata fails on every file that carries none, or carries that of another
/// container
///   than the one asked for; the -if-present form restores what fits and decodes all others.
/// - A bare name that starts with a dash would be read as options (and end with status 0): it gets "./" in
/// front.
///   `exists` tells whether such a word is a file.
Arguments flacArguments(Arguments arguments, const std::function<bool(const std::string &)> &exists);

/// Puts "./" before every word that starts with a dash, holds a dot, and is an existing file.
void guardDashNames(Arguments &arguments, const std::function<bool(const std::string &)> &exists);

} // namespace kruv::adapters
