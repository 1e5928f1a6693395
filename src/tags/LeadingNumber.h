// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

#include <cstdint>

namespace kruv {

/// The integer that a text begins with, after white space and with an optional sign; 0 when it begins with
/// none. Values beyond the type's range become its nearest limit.
std::int32_t leadingInt32(QStringView text);
std::int64_t leadingInt64(QStringView text);

} // namespace kruv
