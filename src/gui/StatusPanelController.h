// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;

namespace kruv {

/// A small window of its own with one line of text and one progress bar.
class StatusPanelController : public QWidget
{
    Q_OBJECT
public:
    explicit StatusPanelController(QWidget *parent = nullptr);

    void setText(const QString &text);
    void setDeterminate(int minimum, int maximum);
    void setInDeterminate();
    void startAnimation();
    void stopAnimation();
    void setProgress(int value);
    void incrementProgress(int delta);

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void showRange();

    QLabel *m_textField;
    QProgressBar *m_progressBar;
    int m_minimum = 0;
    int m_maximum = 100;
    bool m_determinate = true;
    bool m_animated = false;
};

} // namespace kruv
