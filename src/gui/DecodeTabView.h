// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/ConversionTabView.h"

namespace kruv {

class DecodeTab;

class DecodeTabView : public ConversionTabView
{
    Q_OBJECT
public:
    DecodeTabView(DecodeTab &tab, const QStringList &kinds, QWidget *parent);
};

} // namespace kruv
