// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QWidget>

class QRadioButton;

namespace kruv {

class ChoiceControl;

/// The titles of a choice as radio buttons in its rows and columns. Titles that can't be chosen are disabled
/// and say so.
class ChoiceGrid : public QWidget
{
    Q_OBJECT
public:
    struct Name
    {
        /// The object's; the buttons' are this and their choice's id.
        QString object;
        /// What the choice is called to those who hear it.
        QString spoken;
    };
    /// `control` must outlive the grid.
    ChoiceGrid(ChoiceControl &control, const Name &name, QWidget *parent);

private:
    void showSelection();

    ChoiceControl &m_control;
    QList<QRadioButton *> m_buttons;
};

} // namespace kruv
