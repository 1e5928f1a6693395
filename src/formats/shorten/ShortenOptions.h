// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"

/// The settings of Shorten.
namespace kruv::ShortenOptions {

/// A list of the outputs' digests, written when all are made.
extern const FormatOption md5;

} // namespace kruv::ShortenOptions
