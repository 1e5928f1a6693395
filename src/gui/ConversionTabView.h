// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/TabView.h"

#include <QElapsedTimer>

namespace kruv {

class ConversionTab;
class PlanSheet;

/// A tab whose command first shows what it would do, where that is not plain.
class ConversionTabView : public TabView
{
    Q_OBJECT
public:
    ConversionTabView(ConversionTab &tab, const QStringList &kinds, QWidget *parent);

    void showPlan() override;
    bool canShowPlan() const override;

protected:
    /// Names the command, and with the number of files that a plan would make in place of %1.
    void setCommands(const QString &command, const QString &counted);
    QString reasonToWait() const override;
    void commandPressed() override;
    void backPressed() override;

private:
    void showState();
    void showCommand();

    ConversionTab &m_conversionTab;
    PlanSheet *m_sheet;
    QString m_command;
    QString m_countedCommand;
    QElapsedTimer m_sinceShown;
};

} // namespace kruv
