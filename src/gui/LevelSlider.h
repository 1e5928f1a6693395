// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QWidget>

#include <functional>

class QLabel;
class QSlider;

namespace kruv {

class NumberControl;

/// A number of a small range as a slider with a mark for each step, its value beside it.
class LevelSlider : public QWidget
{
    Q_OBJECT
public:
    using ValueText = std::function<QString(int value)>;

    /// `control` must outlive the slider. `valueText` puts the value in words for a person.
    LevelSlider(NumberControl &control, const QString &name, const ValueText &valueText, QWidget *parent);

    QSlider *slider() const { return m_slider; }

private:
    QSlider *m_slider;
    QLabel *m_value;
};

} // namespace kruv
