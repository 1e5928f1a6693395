// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/LeadingNumber.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>

namespace kruv {

namespace {

/// The text as bytes, without leading white space and plus sign. What is not Latin-1 can't be part of a
/// number.
std::string numberBytes(QStringView text)
{
    text = text.trimmed();
    if (text.startsWith(u'+')) {
        text = text.mid(1);
    }
    return text.toLatin1().toStdString();
}

} // namespace

std::int64_t leadingInt64(QStringView text)
{
    const std::string bytes = numberBytes(text);
    std::int64_t value = 0;
    const auto result = std::from_chars(bytes.data(), bytes.data() + bytes.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<std::int64_t>;
        return bytes.front() == '-' ? Limits::min() : Limits::max();
    }
    return value;
}

std::int32_t leadingInt32(QStringView text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(leadingInt64(text), Limits::min(), Limits::max()));
}

} // namespace kruv
