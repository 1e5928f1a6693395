// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RandomInput.h"

#include <cstdint>

namespace kruv::mac {

/// Offset of the stream's first byte, behind ID3v2 tags and other bytes in front. Throws MacError when there
/// is no stream.
uint64_t findStreamStart(const RandomInput &input);

/// Offset of the first byte behind the stream: ID3v1 and APEv2 tags at the end are left out.
uint64_t findStreamEnd(const RandomInput &input);

} // namespace kruv::mac
