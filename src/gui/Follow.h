// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/Controls.h"

#include <QWidget>

namespace kruv {

/// Calls `pull`, which copies the control's value into `widget`, now and whenever the control changed, and
/// carries enabled and hidden over.
template <typename Pull> void follow(Control &control, QWidget *widget, Pull pull)
{
    const auto refresh = [&control, widget, pull] {
        pull();
        widget->setEnabled(control.isEnabled());
        if (widget->isHidden() != control.isHidden()) {
            widget->setHidden(control.isHidden());
        }
    };
    QObject::connect(&control, &Control::changed, widget, refresh);
    refresh();
}

} // namespace kruv
