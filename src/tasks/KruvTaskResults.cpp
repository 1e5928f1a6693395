// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvTaskResults.h"

#include <algorithm>
#include <utility>

namespace kruv {

void KruvTaskResults::addTaskInSet(const KruvTask &task)
{
    const std::lock_guard lock(m_resultsLock);
    if (m_indexOfTask.emplace(&task, m_tasksInSet.size()).second) {
        m_tasksInSet.emplace_back();
        ++m_unfinished;
    }
}

std::size_t KruvTaskResults::taskCount() const
{
    const std::lock_guard lock(m_resultsLock);
    return m_tasksInSet.size();
}

KruvTaskResults::Entry *KruvTaskResults::entryFor(const KruvTask &task)
{
    const auto found = m_indexOfTask.find(&task);
    return found == m_indexOfTask.end() ? nullptr : &m_tasksInSet[found->second];
}

void KruvTaskResults::append(Entry &entry, const QString &text)
{
    if (entry.truncated) {
        return;
    }
    const qsizetype room =
        std::max<qsizetype>(0, std::min(maxTextLength - entry.text.size(), maxSetLength - m_setLength));
    if (text.size() <= room) {
        entry.text += text;
        m_setLength += text.size();
        return;
    }
    entry.text += QStringView(text).left(room);
    m_setLength += room;
    entry.text += tr("\n[The rest of this output was left out.]\n");
    entry.truncated = true;
}

void KruvTaskResults::replace(Entry &entry, const QString &text)
{
    m_setLength += text.size() - entry.text.size();
    entry.text = text;
    entry.truncated = false;
}

void KruvTaskResults::appendResults(const QString &text)
{
    const std::lock_guard lock(m_resultsLock);
    if (!m_tasksInSet.empty()) {
        append(m_tasksInSet.front(), text);
    }
}

void KruvTaskResults::appendResults(const QString &text, const KruvTask &task)
{
    const std::lock_guard lock(m_resultsLock);
    if (Entry *entry = entryFor(task)) {
        append(*entry, text);
    }
}

void KruvTaskResults::appendLine(const QString &line, const KruvTask &task)
{
    const std::lock_guard lock(m_resultsLock);
    if (Entry *entry = entryFor(task)) {
        endLine(*entry);
        entry->text += line + u'\n';
        m_setLength += line.size() + 1;
    }
}

void KruvTaskResults::endLine(const KruvTask &task)
{
    const std::lock_guard lock(m_resultsLock);
    if (Entry *entry = entryFor(task)) {
        endLine(*entry);
    }
}

void KruvTaskResults::endLine(Entry &entry)
{
    if (!entry.text.isEmpty() && !entry.text.endsWith(u'\n')) {
        entry.text += u'\n';
        ++m_setLength;
    }
}

void KruvTaskResults::setResults(const QString &text)
{
    const std::lock_guard lock(m_resultsLock);
    if (!m_tasksInSet.empty()) {
        replace(m_tasksInSet.front(), text);
    }
    m_hasResults = true;
}

void KruvTaskResults::setResults(const QString &text, const KruvTask &task)
{
    const std::lock_guard lock(m_resultsLock);
    if (Entry *entry = entryFor(task)) {
        replace(*entry, text);
    }
    m_hasResults = true;
}

QString KruvTaskResults::results() const
{
    const std::lock_guard lock(m_resultsLock);
    QString all;
    for (const Entry &entry : m_tasksInSet) {
        all += entry.text;
        all += u'\n';
    }
    return all;
}

QString KruvTaskResults::results(const KruvTask &task) const
{
    const std::lock_guard lock(m_resultsLock);
    const auto found = m_indexOfTask.find(&task);
    return found == m_indexOfTask.end() ? QString() : m_tasksInSet[found->second].text;
}

bool KruvTaskResults::taskSetDone() const
{
    const std::lock_guard lock(m_resultsLock);
    return m_taskSetDone;
}

bool KruvTaskResults::hasResults() const
{
    const std::lock_guard lock(m_resultsLock);
    return m_hasResults;
}

void KruvTaskResults::setHasResults(bool hasResults)
{
    const std::lock_guard lock(m_resultsLock);
    m_hasResults = hasResults;
}

void KruvTaskResults::setTaskAfterSetDone(std::shared_ptr<KruvTask> task)
{
    const std::lock_guard lock(m_resultsLock);
    m_taskAfterSetDone = std::move(task);
}

void KruvTaskResults::noteTaskDone(const KruvTask &task)
{
    const std::lock_guard lock(m_resultsLock);
    Entry *entry = entryFor(task);
    if (entry && !entry->done) {
        entry->done = true;
        --m_unfinished;
    }
    m_taskSetDone = m_unfinished == 0;
}

std::shared_ptr<KruvTask> KruvTaskResults::takeTaskAfterSetDone()
{
    const std::lock_guard lock(m_resultsLock);
    return m_taskSetDone ? std::exchange(m_taskAfterSetDone, nullptr) : nullptr;
}

} // namespace kruv
