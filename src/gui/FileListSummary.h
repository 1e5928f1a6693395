// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/BackgroundWork.h"

#include <QLabel>
#include <QTimer>

namespace kruv {

class BaseTab;

/// "3 files, 142 MB" of a tab's list. The sizes are looked up in the background.
class FileListSummary : public QLabel
{
    Q_OBJECT
public:
    /// `tab` must outlive the label.
    FileListSummary(BaseTab &tab, QWidget *parent);

private:
    void refresh();
    void lookUpSizes();
    void showSize(qint64 bytes);

    BaseTab &m_tab;
    QTimer m_lookUpSoon;
    BackgroundWork m_work;
};

} // namespace kruv
