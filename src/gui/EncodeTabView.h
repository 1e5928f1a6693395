// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/TabView.h"

class QStackedWidget;

namespace kruv {

class EncodeTab;

class EncodeTabView : public TabView
{
    Q_OBJECT
public:
    EncodeTabView(EncodeTab &tab, const QStringList &kinds, QWidget *parent);

private:
    void addFormatPages(EncodeTab &tab);
    void addFlacPage(EncodeTab &tab, QStackedWidget *pages);
};

} // namespace kruv
