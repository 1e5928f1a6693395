// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/Version.h"

namespace kruv {

QString shortVersion()
{
    return QStringLiteral(KRUV_VERSION);
}

QString buildNumber()
{
    return QStringLiteral(KRUV_BUILD);
}

} // namespace kruv
