// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace kruv {

class KruvTask;

/// The jobs that a queue holds, in the order in which they begin. Any number of them costs little to append,
/// find, take and begin. The queue's lock guards it.
class QueuedJobs
{
public:
    struct Entry
    {
        std::shared_ptr<KruvTask> task;
        bool started = false;
        bool onlyWaits = false; // for the disk

        /// For its turn.
        bool waits() const;
    };
    enum class Move { First, Up, Down };

    void append(const std::shared_ptr<KruvTask> &task);
    /// Null for a job that is not among them.
    Entry *find(const KruvTask &task);
    const Entry *find(const KruvTask &task) const;
    std::optional<Entry> take(const KruvTask &task);
    std::size_t size() const { return m_entries.size(); }
    bool isEmpty() const { return m_entries.empty(); }
    std::vector<std::shared_ptr<KruvTask>> all() const;
    std::vector<std::shared_ptr<KruvTask>> waiting() const;

    /// The one whose turn is next, or null.
    Entry *nextWaiting();
    bool hasWaiting() const;

    /// The waiting job whose place that one gets by such a move; null where it does nothing.
    const KruvTask *placeFor(const KruvTask &task, Move where) const;
    void move(const KruvTask &task, Move where);

private:
    using Ticket = std::int64_t;
    using Entries = std::map<Ticket, Entry>;

    std::optional<Ticket> goalOf(const KruvTask &task, Move where) const;
    void exchange(Ticket one, Ticket other);

    Entries m_entries;
    std::unordered_map<const KruvTask *, Ticket> m_tickets;
    Ticket m_nextTicket = 0;
    Ticket m_lowestTicket = 0;
    Ticket m_firstWaiting = 0; // nothing before it waits
};

} // namespace kruv
