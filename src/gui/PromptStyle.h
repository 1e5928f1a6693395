// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QColor;
class QMessageBox;
class QPalette;
class QString;
class QWidget;

/// How every question and message of the program looks.
namespace kruv::PromptStyle {

/// A box with `title` in bold above `text`, without buttons, which deletes itself when closed.
QMessageBox *message(QWidget *parent, const QString &title, const QString &text);

/// A red that reads on the palette's background.
QColor warningColor(const QPalette &palette);

} // namespace kruv::PromptStyle
