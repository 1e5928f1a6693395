// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDialog>

#include <optional>

class QLabel;
class QLineEdit;

namespace kruv {

/// Asks for one line of text.
class KruvStringGetterPanel : public QDialog
{
    Q_OBJECT
public:
    explicit KruvStringGetterPanel(QWidget *parent);

    struct Question
    {
        QString title;
        QString message;
        QString initialString;
    };

    /// Returns what was entered, or nothing when the person cancelled.
    std::optional<QString> runPanel(const Question &question);

private:
    QLabel *m_message;
    QLineEdit *m_enteredText;
};

} // namespace kruv
