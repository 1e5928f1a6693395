// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/StatusPanelController.h"

#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace kruv {

StatusPanelController::StatusPanelController(QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_textField(new QLabel(this))
{
    setObjectName(QStringLiteral("progressPanel"));
    setWindowTitle(QStringLiteral("Kruv"));
    auto *bar = new QProgressBar(this);
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setAccessibleName(tr("Progress"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->addWidget(m_textField);
    layout->addWidget(bar);
    setMinimumWidth(360);
}

void StatusPanelController::setText(const QString &text)
{
    m_textField->setText(text);
}

void StatusPanelController::closeEvent(QCloseEvent *event)
{
    event->accept();
    Q_EMIT closed();
}

} // namespace kruv
