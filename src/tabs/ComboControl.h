// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/Controls.h"

namespace kruv {

/// A text field with a list of proposals, which a tab may exchange. The text need not be one of them.
class ComboControl : public TextControl
{
    Q_OBJECT
public:
    explicit ComboControl(const QStringList &items, QObject *parent = nullptr)
        : TextControl(parent)
        , m_items(items)
    {
    }

    const QStringList &items() const { return m_items; }
    /// Leaves the text as it is.
    void setItems(const QStringList &items);

private:
    QStringList m_items;
};

} // namespace kruv
