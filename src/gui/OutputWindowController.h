// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFont>
#include <QWidget>

class QLineEdit;
class QPlainTextEdit;

namespace kruv {

/// A window with the text that a command's jobs produced. Can be searched, copied and saved.
class OutputWindowController : public QWidget
{
    Q_OBJECT
public:
    OutputWindowController();

    void setTextValue(const QString &text, const QString &title);
    /// Below what is there, with `title` as its heading.
    void addText(const QString &text, const QString &title);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLayout *makeBar();
    void find(bool backward);
    void showFound(bool found);
    void copyAll();
    void saveAs();

    QPlainTextEdit *m_textField;
    QLineEdit *m_findField;
    const QFont m_font;
};

} // namespace kruv
