// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/OptionValues.h"

#include "formats/FormatOption.h"

namespace kruv {

void OptionValues::set(const FormatOption &option, const QVariant &value)
{
    m_values.insert(QString::fromLatin1(option.id), value);
}

int OptionValues::number(const FormatOption &option) const
{
    return m_values.value(QString::fromLatin1(option.id), option.standard).toInt();
}

QString OptionValues::choice(const FormatOption &option) const
{
    const auto index = static_cast<std::size_t>(number(option));
    return index < option.choices.size() ? QString::fromLatin1(option.choices[index].id) : QString();
}

} // namespace kruv
