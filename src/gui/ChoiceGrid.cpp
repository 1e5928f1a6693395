// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/ChoiceGrid.h"

#include "gui/Follow.h"
#include "tabs/Controls.h"

#include <QGridLayout>
#include <QRadioButton>

namespace kruv {

ChoiceGrid::ChoiceGrid(ChoiceControl &control, const Name &name, QWidget *parent)
    : QWidget(parent)
    , m_control(control)
{
    setObjectName(name.object);
    setAccessibleName(name.spoken);
    auto *layout = new QGridLayout(this);
    layout->setContentsMargins({});
    layout->setVerticalSpacing(6);
    const QList<ChoiceControl::Choice> &choices = control.choices();
    for (int index = 0; index < choices.size(); ++index) {
        auto *button = new QRadioButton(choices[index].title, this);
        button->setObjectName(name.object + u' ' + choices[index].id);
        button->setAutoExclusive(false); // the model decides, and may select none
        layout->addWidget(button, index / control.columns(), index % control.columns());
        connect(button, &QRadioButton::clicked, this, [this, index] {
            m_control.select(index);
            showSelection();
        });
        m_buttons.append(button);
    }
    for (int column = 0; column < control.columns(); ++column) {
        layout->setColumnStretch(column, 1);
    }
    follow(control, this, [this] { showSelection(); });
}

void ChoiceGrid::showSelection()
{
    for (int index = 0; index < m_buttons.size(); ++index) {
        m_buttons[index]->setChecked(index == m_control.selectedIndex());
    }
}

} // namespace kruv
