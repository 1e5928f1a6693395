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
    , m_progressBar(new QProgressBar(this))
{
    setObjectName(QStringLiteral("progressPanel"));
    setWindowTitle(QStringLiteral("Kruv"));
    m_progressBar->setTextVisible(false);
    m_progressBar->setAccessibleName(tr("Progress"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->addWidget(m_textField);
    layout->addWidget(m_progressBar);
    setMinimumWidth(360);
}

void StatusPanelController::setText(const QString &text)
{
    m_textField->setText(text);
}

void StatusPanelController::setDeterminate(int minimum, int maximum)
{
    m_determinate = true;
    m_minimum = minimum;
    m_maximum = maximum;
    showRange();
}

void StatusPanelController::setInDeterminate()
{
    m_determinate = false;
    showRange();
}

void StatusPanelController::startAnimation()
{
    m_animated = true;
    showRange();
}

void StatusPanelController::stopAnimation()
{
    m_animated = false;
    showRange();
}

void StatusPanelController::showRange()
{
    // A bar without a range is the animated one.
    const bool animated = !m_determinate && m_animated;
    m_progressBar->setRange(animated ? 0 : m_minimum, animated ? 0 : m_maximum);
}

void StatusPanelController::setProgress(int value)
{
    m_progressBar->setValue(value);
}

void StatusPanelController::incrementProgress(int delta)
{
    m_progressBar->setValue(m_progressBar->value() + delta);
}

void StatusPanelController::closeEvent(QCloseEvent *event)
{
    event->accept();
    Q_EMIT closed();
}

} // namespace kruv
