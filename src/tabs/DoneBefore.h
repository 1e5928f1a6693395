// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/History.h"
#include "tabs/ConversionOrder.h"

#include <map>
#include <optional>

namespace kruv {

/// What earlier runs of the same order made and is still as they left it. Asks the journal; where that can't
/// be read, nothing was done before.
class DoneBefore
{
public:
    explicit DoneBefore(const ConversionOrder &order);

    /// Whether an earlier run made this file.
    bool made(const QString &output) const { return makerOf(output).has_value(); }
    /// Whether it made it of this source, which is as it was then.
    bool made(const QString &output, const QString &source) const;

    /// Whether an order that makes something else made this file.
    bool isOfOtherOrder(const QString &output) const;

private:
    std::optional<HistoryEntry> makerOf(const QString &output) const;
    bool isSameOrder(std::int64_t run) const;

    const ConversionOrder m_order;
    std::optional<History> m_history;
    mutable std::map<std::int64_t, bool> m_isSameOrder; // by run
};

} // namespace kruv
