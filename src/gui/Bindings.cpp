// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/Bindings.h"

#include "app/Controls.h"
#include "gui/Follow.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
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
