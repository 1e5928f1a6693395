// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ComboControl.h"

namespace kruv {

void ComboControl::setItems(const QStringList &items)
{
    if (m_items != items) {
        m_items = items;
        Q_EMIT changed();
    }
}

} // namespace kruv
