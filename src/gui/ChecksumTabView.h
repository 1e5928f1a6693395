// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/TabView.h"
#include "tabs/Controls.h"

namespace kruv {

class ChecksumTab;

class ChecksumTabView : public TabView
{
    Q_OBJECT
public:
    ChecksumTabView(ChecksumTab &tab, const QStringList &kinds, QWidget *parent);

private:
    LabelControl m_listHeading;
};

} // namespace kruv
