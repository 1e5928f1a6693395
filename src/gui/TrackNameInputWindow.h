// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace kruv {

class TrackNameInputController;

/// The window in which track names are typed, pasted, loaded and trimmed. Shows and hides as its controller
/// says.
class TrackNameInputWindow : public QDialog
{
    Q_OBJECT
public:
    /// `controller` must outlive the window.
    TrackNameInputWindow(TrackNameInputController &controller, QWidget *parent);

    void accept() override;
    void reject() override;

private:
    void follow();
    void showOrHide(bool shown);
    void replaceText(qsizetype start, qsizetype length, const QString &text, const QString &undoName);
    void noteChange();
    void takeText();
    void takeSelection();

    TrackNameInputController &m_controller;
    QPlainTextEdit *m_names;
    QLabel *m_count;
    QPushButton *m_load;
    QPushButton *m_trim;
    QPushButton *m_undo;
    int m_namedStep = -1; // undo steps after the change that has a name, or -1
    QString m_undoName;
    bool m_replacing = false;
};

} // namespace kruv
