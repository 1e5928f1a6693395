// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/PromptStyle.h"

#include <QLabel>
#include <QMessageBox>

namespace kruv::PromptStyle {

QMessageBox *message(QWidget *parent, const QString &title, const QString &text)
{
    auto *box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(QStringLiteral("Kruv"));
    box->setTextFormat(Qt::PlainText);
    box->setText(title);
    box->setInformativeText(text);
    if (auto *label = box->findChild<QLabel *>(QStringLiteral("qt_msgbox_label"))) {
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
    }
    if (auto *label = box->findChild<QLabel *>(QStringLiteral("qt_msgbox_informativelabel"))) {
        constexpr int comfortable = 340;
        label->setMinimumWidth(comfortable);
    }
    return box;
}

QColor warningColor(const QPalette &palette)
{
    const bool onDark = palette.color(QPalette::Base).lightness() < 128;
    return onDark ? QColor(255, 122, 112) : QColor(200, 0, 0);
}

} // namespace kruv::PromptStyle
