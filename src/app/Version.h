// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// The program's version as people see it, for example "1.0.0".
inline QString shortVersion()
{
    return QStringLiteral(KRUV_VERSION);
}

} // namespace kruv
