// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/LevelSlider.h"

#include "gui/Follow.h"
#include "tabs/Controls.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>

#include <algorithm>

namespace kruv {

LevelSlider::LevelSlider(NumberControl &control, const QString &name, const ValueText &valueText,
                         QWidget *parent)
    : QWidget(parent)
    , m_slider(new QSlider(Qt::Horizontal, this))
    , m_value(new QLabel(this))
{
    m_slider->setObjectName(name);
    m_slider->setAccessibleName(name);
    m_slider->setRange(0, (control.maximum() - control.minimum()) / control.step());
    m_slider->setPageStep(1);
    m_slider->setTickPosition(QSlider::TicksBelow);
    m_slider->setTickInterval(1);
    setFocusProxy(m_slider);

    // Room for the widest value, so that nothing moves while the slider does.
    int widest = 0;
    for (int value = control.minimum(); value <= control.maximum(); value += control.step()) {
        widest = std::max(widest, m_value->fontMetrics().horizontalAdvance(valueText(value)));
    }
    m_value->setFixedWidth(widest + 2);
    m_value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_slider);
    layout->addWidget(m_value);

    follow(control, this, [this, &control, valueText] {
        m_slider->setValue((control.value() - control.minimum()) / control.step());
        m_value->setText(valueText(control.value()));
    });
    connect(m_slider, &QSlider::valueChanged, &control,
            [&control](int position) { control.setValue(control.minimum() + position * control.step()); });
}

} // namespace kruv
