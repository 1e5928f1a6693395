// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <stdexcept>

namespace kruv {

/// What ends a conversion: the step that failed and, where it is known, why.
class AudioError : public std::runtime_error
{
public:
    explicit AudioError(const QString &step, const QString &why = {})
        : std::runtime_error((why.isEmpty() ? step : step + u'\n' + why).toStdString())
    {
    }
};

} // namespace kruv
