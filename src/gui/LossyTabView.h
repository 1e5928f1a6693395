// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/ConversionTabView.h"

namespace kruv {

class LossyTab;

class LossyTabView : public ConversionTabView
{
    Q_OBJECT
public:
    LossyTabView(LossyTab &tab, const QStringList &kinds, QWidget *parent);
};

} // namespace kruv
