// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <stdexcept>

namespace kruv {

/// The command can't be carried out as it was given; the text is one line that says what to change.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString &line)
        : std::runtime_error(line.toStdString())
    {
    }
};

} // namespace kruv
