// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace kruv {

/// Asks the system not to let the machine sleep. Implementations must return quickly and never throw.
class PowerManager
{
public:
    virtual ~PowerManager() = default;

    /// Takes an assertion that shows up under `name`. Nothing when the system refused or is not there.
    virtual std::optional<std::uint32_t> createAssertion(const QString &name) = 0;

    /// Gives an assertion back. Giving back one that is no longer held does nothing.
    virtual void releaseAssertion(std::uint32_t assertionId) = 0;
};

} // namespace kruv
