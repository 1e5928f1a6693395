// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/TabView.h"

namespace kruv {

class EncodeTab;

class EncodeTabView : public TabView
{
    Q_OBJECT
public:
    EncodeTabView(EncodeTab &tab, const QStringList &kinds, QWidget *parent);
};

} // namespace kruv
