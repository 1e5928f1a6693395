// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/FormatControls.h"

#include "base/Preferences.h"
#include "tasks/ToolOutput.h"

#include <QCoreApplication>

#include <algorithm>

namespace kruv {

namespace {

QList<ChoiceControl::Choice> choicesOfOption(const FormatOption &option)
{
    QList<ChoiceControl::Choice> all;
    for (const OptionChoice &choice : option.choices) {
        all.append(
            {QString::fromLatin1(choice.id), QCoreApplication::translate("FormatOption", choice.label)});
    }
    return all;
}

/// What is proposed of numbers.
QStringList proposals(const FormatOption &option)
{
    QStringList all;
    for (const OptionChoice &choice : option.choices) {
        all.append(QString::fromUtf8(choice.label));
    }
    return all;
}

int typedNumber(const QString &text)
{
    return static_cast<int>(ToolOutput::leadingNumber(text));
}

} // namespace

QList<ChoiceControl::Choice> FormatControls::choicesOf(const QList<const Format *> &formats)
{
    QList<ChoiceControl::Choice> all;
    for (const Format *format : formats) {
        all.append({QString::fromLatin1(format->id), format->label.toString()});
    }
    return all;
}

FormatControls::FormatControls(const QList<const Format *> &formats, Preferences &preferences)
{
    for (const Format *format : formats) {
        for (const FormatOption *option : format->options) {
            m_entries.push_back({option, made(*option)});
            if (option->preferenceKey) {
                const QString key = QString::fromLatin1(option->preferenceKey);
                preferences.registerControl(key, option->standard);
                m_entries.back().control->tieTo(preferences, key);
            }
        }
    }
}

std::shared_ptr<Control> FormatControls::made(const FormatOption &option) const
{
    constexpr int columns = 2;
    switch (option.kind) {
    case FormatOption::Kind::Toggle:
        return std::make_shared<ToggleControl>();
    case FormatOption::Kind::Number:
        return std::make_shared<NumberControl>(
            NumberControl::Range{.minimum = option.minimum, .maximum = option.maximum, .step = option.step},
            option.standard);
    case FormatOption::Kind::Choice: {
        auto choice =
            std::make_shared<ChoiceControl>(choicesOfOption(option), option.choices.size() > 2 ? 1 : columns);
        choice->select(option.standard);
        return choice;
    }
    case FormatOption::Kind::Rate:
        break;
    }
    const auto shared = std::ranges::find_if(m_entries, [&option](const Entry &entry) {
        return entry.option->kind == FormatOption::Kind::Rate &&
               qstrcmp(entry.option->preferenceKey, option.preferenceKey) == 0;
    });
    return shared == m_entries.end() ? std::make_shared<ComboControl>(proposals(option)) : shared->control;
}

Control &FormatControls::control(const FormatOption &option) const
{
    return *std::ranges::find(m_entries, &option, &Entry::option)->control;
}

ToggleControl &FormatControls::toggle(const FormatOption &option) const
{
    return static_cast<ToggleControl &>(control(option));
}

NumberControl &FormatControls::number(const FormatOption &option) const
{
    return static_cast<NumberControl &>(control(option));
}

ChoiceControl &FormatControls::choice(const FormatOption &option) const
{
    return static_cast<ChoiceControl &>(control(option));
}

ComboControl &FormatControls::rate(const FormatOption &option) const
{
    return static_cast<ComboControl &>(control(option));
}

int FormatControls::value(const FormatOption &option) const
{
    switch (option.kind) {
    case FormatOption::Kind::Toggle:
        return toggle(option).isOn() ? 1 : 0;
    case FormatOption::Kind::Number:
        return number(option).value();
    case FormatOption::Kind::Choice:
        return std::max(0, choice(option).selectedIndex());
    case FormatOption::Kind::Rate:
        break;
    }
    return std::clamp(typedNumber(rate(option).text()), option.minimum, option.maximum);
}

OptionValues FormatControls::values(const Format &format) const
{
    OptionValues values;
    for (const FormatOption *option : format.options) {
        values.set(*option, value(*option));
    }
    return values;
}

bool FormatControls::isRelevant(const FormatOption &option, const Format *chosen) const
{
    if (!chosen || std::ranges::count(chosen->options, &option) == 0) {
        return false;
    }
    if (!option.dependsOn) {
        return true;
    }
    const auto index = static_cast<std::size_t>(value(*option.dependsOn));
    const QString choice = QString::fromLatin1(option.dependsOn->choices[index].id);
    return QString::fromLatin1(option.onlyFor).split(u' ').contains(choice);
}

void FormatControls::fitRate(const FormatOption &option)
{
    ComboControl &box = rate(option);
    box.setItems(proposals(option));
    const int typed = typedNumber(box.text());
    if (typed < option.minimum || typed > option.maximum) {
        box.setText(QString::number(option.correction));
    }
}

} // namespace kruv
