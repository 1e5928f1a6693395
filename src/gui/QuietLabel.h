// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLabel>

namespace kruv {

/// A label in a subdued tone of the text's colour that reads on light and dark alike.
class QuietLabel : public QLabel
{
    Q_OBJECT
public:
    QuietLabel(const QString &text, QWidget *parent);

    static QColor tone(const QPalette &palette);

protected:
    void changeEvent(QEvent *event) override;

private:
    void takeTone();
};

} // namespace kruv
