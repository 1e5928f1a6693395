// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/TabView.h"

namespace kruv {

class FixTab;

/// The fix tab on screen.
class FixTabView : public TabView
{
    Q_OBJECT
public:
    FixTabView(FixTab &tab, const QStringList &kinds, QWidget *parent);
};

} // namespace kruv
