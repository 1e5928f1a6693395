// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <cstring>

namespace kruv {

/// What the system says of an error number, for a person.
inline QString systemErrorText(int number)
{
    return QString::fromLocal8Bit(std::strerror(number));
}

} // namespace kruv
