// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// What a check box or button shows, and the object name that it goes by.
struct ControlLook
{
    QString text;
    QString objectName;
    QString toolTip;
};

} // namespace kruv
