// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace kruv {

class ChoiceControl;
class ComboControl;
class LabelControl;
class NumberControl;
class TextControl;
class ToggleControl;

/// Ties a widget to the model of an option, both ways: value, enabled and hidden. The model must outlive the
/// widget, and the widget must have a parent already.
namespace Bindings {

void bind(ToggleControl &control, QCheckBox *box);
void bind(TextControl &control, QLineEdit *field);
/// The box must be editable.
void bind(ComboControl &control, QComboBox *box);
void bind(ChoiceControl &control, QComboBox *box);
void bind(LabelControl &control, QLabel *label);
void bind(NumberControl &control, QSpinBox *stepper);

} // namespace Bindings
} // namespace kruv
