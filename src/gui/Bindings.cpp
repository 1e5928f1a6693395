// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/Bindings.h"

#include "gui/Follow.h"
#include "tabs/ComboControl.h"
#include "tabs/Controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>

namespace kruv::Bindings {

void bind(ToggleControl &control, QCheckBox *box)
{
    follow(control, box, [&control, box] { box->setChecked(control.isOn()); });
    QObject::connect(box, &QCheckBox::toggled, &control, &ToggleControl::setOn);
}

void bind(TextControl &control, QLineEdit *field)
{
    follow(control, field, [&control, field] {
        // Setting an equal text would move the cursor of a person who types.
        if (field->text() != control.text()) {
            field->setText(control.text());
        }
    });
    QObject::connect(field, &QLineEdit::textChanged, &control, &TextControl::setText);
}

void bind(ComboControl &control, QComboBox *box)
{
    follow(control, box, [&control, box] {
        if (box->property("items") != control.items()) {
            const QSignalBlocker blocker(box); // the text that refilling leaves behind is nobody's choice
            box->setProperty("items", control.items());
            box->clear();
            box->addItems(control.items());
        }
        if (box->currentText() != control.text()) {
            box->setCurrentText(control.text());
        }
    });
    QObject::connect(box, &QComboBox::currentTextChanged, &control, &ComboControl::setText);
}

void bind(ChoiceControl &control, QComboBox *box)
{
    box->addItems(control.titles());
    follow(control, box, [&control, box] { box->setCurrentIndex(control.selectedIndex()); });
    QObject::connect(box, &QComboBox::currentIndexChanged, &control, &ChoiceControl::select);
}

void bind(LabelControl &control, QLabel *label)
{
    follow(control, label, [&control, label] { label->setText(control.text()); });
}

void bind(NumberControl &control, QSpinBox *stepper)
{
    stepper->setRange(control.minimum(), control.maximum());
    stepper->setSingleStep(control.step());
    follow(control, stepper, [&control, stepper] { stepper->setValue(control.value()); });
    QObject::connect(stepper, &QSpinBox::valueChanged, &control, &NumberControl::setValue);
}

} // namespace kruv::Bindings
