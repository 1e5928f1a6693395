// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/TaskState.h"

namespace kruv {

TaskState::Outcome TaskState::outcome() const
{
    const std::uint8_t bits = m_bits;
    if ((bits & cancelledBit) != 0) {
        return Outcome::Cancelled;
    }
    return (bits & failedBit) != 0 ? Outcome::Failed : Outcome::Complete;
}

std::uint8_t TaskState::enter(Phase phase)
{
    std::uint8_t before = m_bits;
    while (!m_bits.compare_exchange_weak(
        before, static_cast<std::uint8_t>((before & ~phaseBits) | static_cast<std::uint8_t>(phase)))) {
    }
    return before;
}

bool TaskState::startFinishing()
{
    return (enter(Phase::Finishing) & (failedBit | cancelledBit)) == 0;
}

TaskState::Phase TaskState::cancel()
{
    std::uint8_t before = m_bits;
    while (phaseOf(before) < Phase::Finishing &&
           !m_bits.compare_exchange_weak(before, static_cast<std::uint8_t>(before | cancelledBit))) {
    }
    return phaseOf(before);
}

void TaskState::setFailed(bool failed)
{
    std::uint8_t before = m_bits;
    const auto after = [failed](std::uint8_t bits) {
        return static_cast<std::uint8_t>(failed ? (bits | failedBit) & ~doneBit : bits & ~failedBit);
    };
    while (!m_bits.compare_exchange_weak(before, after(before))) {
    }
}

} // namespace kruv
