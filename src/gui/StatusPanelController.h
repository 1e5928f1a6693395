// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QWidget>

class QLabel;

namespace kruv {

/// A small window of its own with one line of text and a bar that moves without an end.
class StatusPanelController : public QWidget
{
    Q_OBJECT
public:
    explicit StatusPanelController(QWidget *parent = nullptr);

    void setText(const QString &text);

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QLabel *m_textField;
};

} // namespace kruv
