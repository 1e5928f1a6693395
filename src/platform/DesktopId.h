// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// The name of the desktop entry (without its ending), the icon and the metadata.
inline QString desktopId()
{
    return QStringLiteral("org.kruv.Kruv");
}

} // namespace kruv
