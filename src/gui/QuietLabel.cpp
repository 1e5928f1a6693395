// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/QuietLabel.h"

#include <QEvent>
#include <QGuiApplication>

namespace kruv {

QuietLabel::QuietLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{
    takeTone();
}

QColor QuietLabel::tone(const QPalette &palette)
{
    QColor color = palette.color(QPalette::Text);
    color.setAlphaF(0.65F);
    return color;
}

void QuietLabel::takeTone()
{
    const QColor quiet = tone(QGuiApplication::palette());
    if (palette().color(QPalette::Text) == quiet) {
        return; // a palette of our own is a change of it too
    }
    QPalette own;
    own.setColor(QPalette::WindowText, quiet);
    own.setColor(QPalette::Text, quiet); // what a label on a list's background writes in
    setPalette(own);
}

void QuietLabel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange) {
        takeTone();
    }
    QLabel::changeEvent(event);
}

} // namespace kruv
