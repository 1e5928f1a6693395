// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/QueuedJobs.h"

#include "tasks/KruvTask.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kruv {

namespace {

constexpr auto waitsForItsTurn = [](const auto &place) { return place.second.waits(); };

} // namespace

bool QueuedJobs::Entry::waits() const
{
    return !started && !task->isDone();
}

void QueuedJobs::append(const std::shared_ptr<KruvTask> &task)
{
    const Ticket ticket = m_nextTicket++;
    m_entries.emplace(ticket, Entry{task});
    m_tickets.emplace(task.get(), ticket);
}

QueuedJobs::Entry *QueuedJobs::find(const KruvTask &task)
{
    const auto found = m_tickets.find(&task);
    return found == m_tickets.end() ? nullptr : &m_entries.at(found->second);
}

const QueuedJobs::Entry *QueuedJobs::find(const KruvTask &task) const
{
    const auto found = m_tickets.find(&task);
    return found == m_tickets.end() ? nullptr : &m_entries.at(found->second);
}

std::optional<QueuedJobs::Entry> QueuedJobs::take(const KruvTask &task)
{
    const auto found = m_tickets.find(&task);
    if (found == m_tickets.end()) {
        return std::nullopt;
    }
    const auto entry = m_entries.extract(found->second);
    m_tickets.erase(found);
    return entry.mapped();
}

std::vector<std::shared_ptr<KruvTask>> QueuedJobs::all() const
{
    std::vector<std::shared_ptr<KruvTask>> tasks;
    for (const auto &[ticket, entry] : m_entries) {
        tasks.push_back(entry.task);
    }
    return tasks;
}

std::vector<std::shared_ptr<KruvTask>> QueuedJobs::waiting() const
{
    std::vector<std::shared_ptr<KruvTask>> tasks = all();
    std::erase_if(tasks, [this](const auto &task) { return !find(*task)->waits(); });
    return tasks;
}

QueuedJobs::Entry *QueuedJobs::nextWaiting()
{
    const auto next = std::find_if(m_entries.lower_bound(m_firstWaiting), m_entries.end(), waitsForItsTurn);
    m_firstWaiting = next == m_entries.end() ? m_nextTicket : next->first;
    return next == m_entries.end() ? nullptr : &next->second;
}

bool QueuedJobs::hasWaiting() const
{
    return std::any_of(m_entries.lower_bound(m_firstWaiting), m_entries.end(), waitsForItsTurn);
}

std::optional<QueuedJobs::Ticket> QueuedJobs::goalOf(const KruvTask &task, Move where) const
{
    const Entry *entry = find(task);
    if (!entry || !entry->waits()) {
        return std::nullopt;
    }
    const auto own = m_entries.find(m_tickets.at(&task));
    if (where == Move::Down) {
        const auto next = std::find_if(std::next(own), m_entries.end(), waitsForItsTurn);
        return next == m_entries.end() ? std::nullopt : std::optional(next->first);
    }
    const auto first = m_entries.lower_bound(m_firstWaiting);
    if (where == Move::First) {
        const auto goal = std::find_if(first, own, waitsForItsTurn);
        return goal == own ? std::nullopt : std::optional(goal->first);
    }
    const auto end = std::make_reverse_iterator(first);
    const auto before = std::find_if(std::make_reverse_iterator(own), end, waitsForItsTurn);
    return before == end ? std::nullopt : std::optional(before->first);
}

const KruvTask *QueuedJobs::placeFor(const KruvTask &task, Move where) const
{
    const auto goal = goalOf(task, where);
    return goal ? m_entries.at(*goal).task.get() : nullptr;
}

void QueuedJobs::exchange(Ticket one, Ticket other)
{
    std::swap(m_entries.at(one), m_entries.at(other));
    m_tickets[m_entries.at(one).task.get()] = one;
    m_tickets[m_entries.at(other).task.get()] = other;
}

void QueuedJobs::move(const KruvTask &task, Move where)
{
    const auto goal = goalOf(task, where);
    if (!goal) {
        return;
    }
    Ticket &own = m_tickets.at(&task);
    if (where == Move::First) {
        auto entry = m_entries.extract(own);
        own = m_firstWaiting = --m_lowestTicket;
        entry.key() = own;
        m_entries.insert(std::move(entry));
    } else {
        exchange(own, *goal);
    }
}

} // namespace kruv
