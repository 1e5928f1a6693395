// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/TabView.h"

class QStackedWidget;

namespace kruv {

class SHNtoolTab;

class ShntoolTabView : public TabView
{
    Q_OBJECT
public:
    ShntoolTabView(SHNtoolTab &tab, const QStringList &kinds, QWidget *parent);

private:
    void addLengthOptions(SHNtoolTab &tab, QStackedWidget *pages);
    void addOutputOptions(SHNtoolTab &tab, QStackedWidget *pages);
};

} // namespace kruv
