// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/DoneBefore.h"

#include "journal/JournalFile.h"

#include <stdexcept>

namespace kruv {

DoneBefore::DoneBefore(const ConversionOrder &order)
    : m_order(order)
{
    try {
        m_history.emplace(JournalFile::usualPath());
    } catch (const std::runtime_error &) { // the run that follows says so
    }
}

bool DoneBefore::made(const QString &output, const QString &source) const
{
    const auto maker = makerOf(output);
    return maker && maker->sourceIsAsItWas(source);
}

bool DoneBefore::isOfOtherOrder(const QString &output) const
{
    const auto maker = m_history ? m_history->makerOf(output) : std::nullopt;
    return maker && !isSameOrder(maker->run);
}

std::optional<HistoryEntry> DoneBefore::makerOf(const QString &output) const
{
    auto maker = m_history ? m_history->makerOf(output) : std::nullopt;
    const bool isWhole = maker && maker->hasState(EntryEnd::State::Done) && maker->outputsAreAsTheyWere() &&
                         isSameOrder(maker->run);
    return isWhole ? maker : std::nullopt;
}

bool DoneBefore::isSameOrder(std::int64_t run) const
{
    const auto known = m_isSameOrder.find(run);
    if (known != m_isSameOrder.end()) {
        return known->second;
    }
    const auto record = m_history->run(run);
    const auto kept = record ? ConversionOrder::fromText(record->plan) : std::nullopt;
    return m_isSameOrder[run] = kept && m_order.makesTheSame(kept->order);
}

} // namespace kruv
