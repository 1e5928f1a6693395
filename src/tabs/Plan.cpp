// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/Plan.h"

#include "base/InParallel.h"
#include "journal/DoneRecord.h"
#include "tabs/SpaceCheck.h"
#include "tasks/FileCommit.h"
#include "tasks/KruvTask.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace kruv {

namespace {

PlanEntry::Action actionOf(EntryRecord::Action action)
{
    switch (action) {
    case EntryRecord::Action::Make:
        return PlanEntry::Action::Make;
    case EntryRecord::Action::Replace:
        return PlanEntry::Action::Replace;
    case EntryRecord::Action::Rename:
    case EntryRecord::Action::Restore:
        return PlanEntry::Action::Rename;
    case EntryRecord::Action::Work:
        break;
    }
    return PlanEntry::Action::Work;
}

qint64 sizeOf(const QStringList &files)
{
    qint64 size = 0;
    for (const QString &file : files) {
        size += QFileInfo(file).size();
    }
    return size;
}

/// Which sources an output is made of: of each its own, where there are several of both. What more outputs
/// there are then is about all of them.
QStringList sourcesOf(const JobOutline &outline, qsizetype output)
{
    if (outline.sources.size() < 2 || outline.outputs.size() < 2) {
        return outline.sources;
    }
    return output < outline.sources.size() ? QStringList{outline.sources.at(output)} : QStringList();
}

bool isFolder(const QString &output)
{
    return QFileInfo(output).isDir();
}

PlanEntry::Action actionOf(const JobOutline &outline, const QString &output)
{
    if (output.isEmpty()) {
        return PlanEntry::Action::Work;
    }
    if (!FileCommit::isTaken(output)) {
        return outline.copies ? PlanEntry::Action::Copy : PlanEntry::Action::Make;
    }
    switch (outline.existing) {
    case JobOutline::Existing::Compared:
        return PlanEntry::Action::Check;
    case JobOutline::Existing::Renewed:
        return PlanEntry::Action::Update;
    case JobOutline::Existing::Usual:
        break;
    }
    return PlanEntry::Action::Replace;
}

/// An entry an output, or one where there is none.
std::vector<PlanEntry> entriesOf(KruvTask &job)
{
    const JobOutline outline = job.outline();
    const bool isOneSource = outline.sources.size() == 1; // of several outputs, perhaps
    PlanEntry entry;
    entry.reason = job.foreseenFailure();
    entry.notes = outline.changes + job.remarks();
    entry.bytes = outline.outputs.size() == 1 ? job.foreseenBytes() : 0;
    entry.keepReason = job.plannedEntry().keepReason;
    if (entry.reason.isEmpty() && std::ranges::any_of(outline.outputs, isFolder)) {
        entry.reason = QCoreApplication::translate("kruv::Plan", "There is a folder of that name.");
    }
    std::vector<PlanEntry> entries;
    for (qsizetype index = 0; index < std::max<qsizetype>(outline.outputs.size(), 1); ++index) {
        entry.sources = sourcesOf(outline, index);
        entry.output = outline.outputs.value(index);
        entry.sourceBytes = isOneSource && index > 0 ? 0 : sizeOf(entry.sources);
        entry.deletesOriginal =
            job.deleteOriginal() && entry.keepReason.isEmpty() && !(isOneSource && index > 0);
        entry.action = entry.reason.isEmpty() ? actionOf(outline, entry.output) : PlanEntry::Action::Refuse;
        entries.push_back(entry);
    }
    return entries;
}

} // namespace

void Plan::addJobs(std::span<const std::shared_ptr<KruvTask>> jobs, std::size_t threads)
{
    std::vector<std::vector<PlanEntry>> found(jobs.size());
    inParallel(
        jobs.size(), threads, [] { return false; },
        [&](std::size_t index) { found[index] = entriesOf(*jobs[index]); });
    for (std::vector<PlanEntry> &entries : found) {
        m_entries.insert(m_entries.end(), std::make_move_iterator(entries.begin()),
                         std::make_move_iterator(entries.end()));
    }
}

void Plan::addRecords(std::span<const DoneRecord> records)
{
    for (const DoneRecord &record : records) {
        m_entries.push_back({.sources = {record.entry.source},
                             .output = record.entry.output,
                             .action = actionOf(record.entry.action)});
    }
}

void Plan::estimate(const CostOf &costOf, int jobsAtOnce)
{
    m_jobsAtOnce = std::max(jobsAtOnce, 1);
    for (PlanEntry &entry : m_entries) {
        const bool isCopy = entry.action == PlanEntry::Action::Copy;
        if (!entry.isMade() || isCopy || entry.sources.size() != 1 || entry.output.isEmpty()) {
            continue;
        }
        if (const auto cost = costOf(entry.sources.constFirst(), entry.sourceBytes)) {
            entry.bytes = entry.bytes > 0 ? entry.bytes : cost->bytes; // what its header says is exact
            entry.seconds = cost->seconds;
        }
    }
}

QStringList Plan::shortages(bool freesOriginals) const
{
    SpaceCheck check;
    for (const PlanEntry &entry : m_entries) {
        if (!entry.isMade() || entry.output.isEmpty()) {
            continue;
        }
        check.addOutput(QFileInfo(entry.output).path(), entry.bytes);
        if (entry.action == PlanEntry::Action::Replace) {
            check.addFreed(entry.output);
        }
        for (const QString &source : freesOriginals &&entry.deletesOriginal ? entry.sources : QStringList()) {
            check.addFreed(source);
        }
    }
    return check.shortages();
}

void Plan::refuse(const Test &test, const QString &reason)
{
    for (PlanEntry &entry : m_entries) {
        if (entry.isMade() && test(entry)) {
            entry.action = PlanEntry::Action::Refuse;
            entry.reason = reason;
        }
    }
}

Plan::Totals Plan::totals() const
{
    Totals totals;
    double longest = 0.0;
    qint64 estimated = 0; // bytes that are read for outputs of a size that is known
    for (const PlanEntry &entry : m_entries) {
        if (entry.action == PlanEntry::Action::Refuse) {
            ++totals.refused;
        } else if (!entry.isMade()) {
            ++totals.skipped;
        } else {
            ++totals.made;
            totals.replaced += entry.action == PlanEntry::Action::Replace;
            totals.originalsDeleted += entry.deletesOriginal ? entry.sources.size() : 0;
            totals.sourceBytes += entry.sourceBytes;
            totals.bytes += entry.bytes;
            totals.seconds += entry.seconds / m_jobsAtOnce;
            longest = std::max(longest, entry.seconds);
            estimated += entry.bytes > 0 ? entry.sourceBytes : 0;
        }
    }
    constexpr double nearlyAll = 0.95; // of what is read
    if (static_cast<double>(estimated) < nearlyAll * static_cast<double>(totals.sourceBytes)) {
        totals.bytes = 0;
        totals.seconds = 0.0;
        longest = 0.0;
    }
    totals.seconds = std::max(totals.seconds, longest);
    return totals;
}

} // namespace kruv
