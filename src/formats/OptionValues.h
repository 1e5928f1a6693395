// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

namespace kruv {

struct FormatOption;

/// What was chosen of a format's options. An option that was not set has its standard value. Copies share
/// their data, so that the jobs of one command hold one of it.
class OptionValues
{
public:
    void set(const FormatOption &option, const QVariant &value);

    int number(const FormatOption &option) const;
    bool isOn(const FormatOption &option) const { return number(option) != 0; }
    /// The id of the choice.
    QString choice(const FormatOption &option) const;

private:
    QMap<QString, QVariant> m_values; // by the option's id
};

} // namespace kruv
