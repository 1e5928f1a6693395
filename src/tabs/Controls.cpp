// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/Controls.h"

#include "base/Preferences.h"

#include <algorithm>

namespace kruv {

void Control::setEnabled(bool enabled)
{
    if (m_enabled != enabled) {
        m_enabled = enabled;
        Q_EMIT changed();
    }
}

void Control::setHidden(bool hidden)
{
    if (m_hidden != hidden) {
        m_hidden = hidden;
        Q_EMIT changed();
    }
}

void Control::tieTo(Preferences &preferences, const QString &key)
{
    loadValue(preferences, key);
    m_preferences = &preferences;
    m_key = key;
}

void Control::valueChanged()
{
    if (m_preferences) {
        m_preferences->setValue(m_key, storedValue());
    }
    Q_EMIT changed();
}

void ToggleControl::setOn(bool on)
{
    if (m_on != on) {
        m_on = on;
        valueChanged();
    }
}

void ToggleControl::loadValue(Preferences &preferences, const QString &key)
{
    setOn(preferences.boolean(key));
}

ChoiceControl::ChoiceControl(const QList<Choice> &choices, int columns, QObject *parent)
    : Control(parent)
    , m_choices(choices)
    , m_columns(columns)
{
}

QStringList ChoiceControl::ids() const
{
    QStringList all;
    for (const Choice &choice : m_choices) {
        all.append(choice.id);
    }
    return all;
}

QStringList ChoiceControl::titles() const
{
    QStringList all;
    for (const Choice &choice : m_choices) {
        all.append(choice.title);
    }
    return all;
}

void ChoiceControl::select(int index)
{
    const int selected = index >= 0 && index < m_choices.size() ? index : -1;
    if (m_selected != selected) {
        m_selected = selected;
        valueChanged();
    }
}

bool ChoiceControl::selectId(const QString &id)
{
    const auto index = static_cast<int>(ids().indexOf(id));
    if (index < 0) {
        return false;
    }
    select(index);
    return true;
}

void ChoiceControl::loadValue(Preferences &preferences, const QString &key)
{
    if (const int stored = preferences.integer(key); stored >= 0 && stored < m_choices.size()) {
        select(stored);
    }
}

NumberControl::NumberControl(const Range &range, int value, QObject *parent)
    : Control(parent)
    , m_range(range)
    , m_value(value)
{
}

void NumberControl::setValue(int value)
{
    const int inRange = std::clamp(value, minimum(), maximum());
    const int clamped = inRange - (inRange - minimum()) % step();
    if (m_value != clamped) {
        m_value = clamped;
        valueChanged();
    }
}

void NumberControl::loadValue(Preferences &preferences, const QString &key)
{
    setValue(preferences.integer(key));
}

void TextControl::setText(const QString &text)
{
    if (m_text != text) {
        m_text = text;
        valueChanged();
    }
}

void TextControl::loadValue(Preferences &preferences, const QString &key)
{
    setText(preferences.string(key));
}

void LabelControl::setText(const QString &text)
{
    if (m_text != text) {
        m_text = text;
        valueChanged();
    }
}

} // namespace kruv
