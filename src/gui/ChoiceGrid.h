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
    /// `control` must outlive the grid. `name` is what the choice is called to those who hear it; the
    /// buttons' object names are `name` and their title.
    ChoiceGrid(ChoiceControl &control, const QString &name, QWidget *parent);

private:
    void showSelection();

    ChoiceControl &m_control;
    QList<QRadioButton *> m_buttons;
};

} // namespace kruv
