// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <cstdint>

namespace kruv {

/// Where a job is in its life, and what it came to: one word of memory, so that no two looks at it can
/// contradict each other. Any thread.
class TaskState
{
public:
    enum class Phase : std::uint8_t {
        Waiting,
        Running,
        /// Running, and what it was asked for is as good as done: cancelling comes too late.
        Finishing,
        Ended
    };
    enum class Outcome { Complete, Failed, Cancelled };

    Phase phase() const { return phaseOf(m_bits); }
    /// What it comes to as things stand; final once it has ended. Cancelling outranks failing.
    Outcome outcome() const;
    bool failed() const { return outcome() == Outcome::Failed; }
    bool cancelled() const { return outcome() == Outcome::Cancelled; }
    /// It was taken out of the queue before it began: it is not wanted later either.
    bool withdrawn() const { return (m_bits.load() & withdrawnBit) != 0; }
    /// What was done in the end, for a person: what is done all the same counts as complete.
    Outcome whatWasDone() const { return doneAllTheSame() ? Outcome::Complete : outcome(); }
    /// It was cancelled, but what it was asked for was done all the same.
    bool doneAllTheSame() const { return (m_bits.load() & doneBit) != 0; }

    void start() { enter(Phase::Running); }
    /// From here on it can't be cancelled any more. False where it already was, or has failed.
    bool startFinishing();
    /// False when it had ended before.
    bool end() { return phaseOf(enter(Phase::Ended)) != Phase::Ended; }
    /// The phase it was found in: in the last two, cancelling changed nothing.
    Phase cancel();
    void setWithdrawn() { m_bits |= withdrawnBit; }
    void setFailed(bool failed);
    void setDoneAllTheSame() { m_bits |= doneBit; }

private:
    static constexpr std::uint8_t phaseBits = 3;
    static constexpr std::uint8_t failedBit = 4;
    static constexpr std::uint8_t cancelledBit = 8;
    static constexpr std::uint8_t doneBit = 16;
    static constexpr std::uint8_t withdrawnBit = 32;

    /// Returns what it was before.
    std::uint8_t enter(Phase phase);
    static Phase phaseOf(std::uint8_t bits) { return static_cast<Phase>(bits & phaseBits); }

    std::atomic<std::uint8_t> m_bits = 0;
};

} // namespace kruv
