// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/TabView.h"

class QComboBox;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;

namespace kruv {

class UtilTab;

class UtilTabView : public TabView
{
    Q_OBJECT
public:
    UtilTabView(UtilTab &tab, const QStringList &kinds, QWidget *parent);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void addPages();
    void addDiscPage(QStackedWidget *pages);
    void addDvdPage(QStackedWidget *pages);
    void addRatePage(QStackedWidget *pages);
    void listDrives();
    void nameCommand();

    UtilTab &m_tab;
    QComboBox *m_drives = nullptr;
    QPushButton *m_listTracks = nullptr;
};

} // namespace kruv
