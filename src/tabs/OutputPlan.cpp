// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/OutputPlan.h"

#include "base/InParallel.h"
#include "base/PathNames.h"
#include "base/PortableName.h"
#include "tasks/FileCommit.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cstddef>
#include <map>
#include <span>

namespace kruv {

namespace {

/// Folders under the one name that the disk knows them by, each looked up once.
class RealFolders
{
public:
    const QString &of(const QString &folder)
    {
        const auto known = m_names.constFind(folder);
        if (known != m_names.constEnd()) {
            return *known;
        }
        const QString real = QFileInfo(folder).canonicalFilePath();
        return *m_names.insert(folder, real.isEmpty() ? folder : real);
    }

private:
    QHash<QString, QString> m_names;
};

/// `planned` has the keys of names that are taken by other outputs. "song (2).flac" for "song.flac", or the
/// first number that is free.
QString numbered(const QString &path, const QString &extension, const QSet<QString> &planned)
{
    const QString folder = PathNames::folderOf(path);
    const QString base = PathNames::lastPathComponent(path).chopped(extension.size() + 1);
    for (int number = 2;; ++number) {
        const QString ending = QStringLiteral(" (%1).%2").arg(QString::number(number), extension);
        QString name = (folder.endsWith(u'/') ? folder : folder + u'/') + PortableName::cut(base, ending);
        if (!FileCommit::isTaken(name) && !planned.contains(FoldedNames::key(name))) {
            return name;
        }
    }
}

} // namespace

OutputPlan::OutputPlan(const QStringList &sources, const OutputPlace &place, const QString &extension,
                       std::size_t threads)
    : m_foldsNames(place.isPortable)
    , m_foldsFolders(place.isPortable && !place.folder.isEmpty())
{
    const QStringList outputs = place.outputsFor(sources, extension, threads);
    m_entries.reserve(static_cast<std::size_t>(sources.size()));
    for (qsizetype index = 0; index < sources.size(); ++index) {
        m_entries.push_back({sources[index], PathNames::folderOf(outputs[index]), outputs[index]});
    }
}

OutputPlan::OutputPlan(std::vector<Entry> entries, std::vector<List> lists)
    : m_entries(std::move(entries))
    , m_lists(std::move(lists))
{
}

QStringList OutputPlan::outputs() const
{
    QStringList all;
    for (const Entry &entry : m_entries) {
        if (!entry.isCopy) {
            all.append(entry.output);
        }
    }
    return all;
}

QStringList OutputPlan::folders() const
{
    QStringList all;
    for (const Entry &entry : m_entries) {
        if (!entry.isCopy) {
            all.append(entry.folder);
        }
    }
    all.removeDuplicates();
    return all;
}

/// A list above the folders of the audio is about all of them.
QStringList OutputPlan::outputsFor(const List &list) const
{
    const QString above = list.folder + u'/';
    QStringList inFolder;
    QStringList below;
    for (const Entry &entry : m_entries) {
        if (entry.isCopy) {
            continue;
        }
        if (list.folder.isEmpty() || entry.folder == list.folder) {
            inFolder.append(entry.output);
        } else if (list.kind != List::Kind::OfOption && entry.output.startsWith(above)) {
            below.append(entry.output);
        }
    }
    return inFolder.isEmpty() ? below : inFolder;
}

bool OutputPlan::addList(const List &list)
{
    const bool isNew = std::ranges::find(m_lists, list.path, &List::path) == m_lists.end();
    if (isNew) {
        m_lists.push_back(list);
    }
    return isNew;
}

bool OutputPlan::isInTheWay(const Entry &entry)
{
    return !entry.isDone && entry.earlier == ConversionRequest::Earlier::None &&
           FileCommit::isTaken(entry.output);
}

/// A list of outputs that were made before is their own.
bool OutputPlan::isInTheWay(const List &list) const
{
    const auto isKnown = [](const Entry &entry) {
        return entry.isDone || entry.earlier != ConversionRequest::Earlier::None;
    };
    return std::ranges::none_of(m_entries, isKnown) && FileCommit::isTaken(list.path);
}

QStringList OutputPlan::existing() const
{
    constexpr int mostThreads = 4;
    std::vector<char> areInTheWay(m_entries.size()); // no bits, which threads can't write side by side
    inParallel(
        m_entries.size(), threadsForOneJob(mostThreads), [] { return false; },
        [&](std::size_t index) { areInTheWay[index] = isInTheWay(m_entries[index]) ? 1 : 0; });
    QStringList taken;
    for (std::size_t index = 0; index < m_entries.size(); ++index) {
        if (areInTheWay[index] != 0) {
            taken.append(m_entries[index].output);
        }
    }
    for (const List &list : m_lists) {
        if (isInTheWay(list)) {
            taken.append(list.path);
        }
    }
    return taken;
}

void OutputPlan::settleExisting(ExistingFiles choice)
{
    if (choice == ExistingFiles::Skip || choice == ExistingFiles::Refuse) {
        const auto action =
            choice == ExistingFiles::Skip ? PlanEntry::Action::SkipExisting : PlanEntry::Action::Refuse;
        const QString reason = tr("There is a file of that name already.");
        for (const Entry &entry : m_entries) {
            if (isInTheWay(entry)) {
                leaveOut(entry, action, reason);
            }
        }
        for (const List &list : m_lists) {
            if (isInTheWay(list)) {
                m_leftOut.push_back({.output = list.path, .action = action, .reason = reason});
            }
        }
        std::erase_if(m_entries, [this](const Entry &entry) { return isInTheWay(entry); });
        std::erase_if(m_lists, [this](const List &list) { return isInTheWay(list); });
        return;
    }
    QSet<QString> planned; // their keys
    for (const Entry &entry : m_entries) {
        planned.insert(FoldedNames::key(entry.output));
    }
    for (Entry &entry : m_entries) {
        if (!isInTheWay(entry)) {
            continue;
        }
        if (choice == ExistingFiles::Replace) {
            entry.mayReplace = true;
            entry.replaced = FileStamp::of(entry.output);
        } else {
            entry.output = numbered(entry.output, PathNames::extension(entry.output), planned);
            planned.insert(FoldedNames::key(entry.output));
        }
    }
    for (List &list : m_lists) {
        if (choice == ExistingFiles::KeepBoth && isInTheWay(list)) {
            list.path = numbered(list.path, list.extension, planned);
        }
    }
}

std::vector<OutputPlan::Clash> OutputPlan::clashes(const NameTest &areOne) const
{
    QMultiHash<QString, std::size_t> earlierEntries;
    earlierEntries.reserve(static_cast<qsizetype>(m_entries.size()));
    RealFolders realFolders;
    std::vector<Clash> found;
    for (std::size_t index = 0; index < m_entries.size(); ++index) {
        const Entry &entry = m_entries[index];
        // A folder may be in the list twice, once through a link.
        const QString folder = realFolders.of(entry.folder);
        const QString name = PathNames::lastPathComponent(entry.output);
        const QString key =
            (m_foldsFolders ? FoldedNames::key(folder) : folder) + u'/' + FoldedNames::key(name);
        const QList<std::size_t> alike = earlierEntries.values(key);
        const auto earlier = std::ranges::find_if(alike, [&](std::size_t each) {
            const QString other = PathNames::lastPathComponent(m_entries[each].output);
            return other == name || m_foldsNames || areOne(folder, other, name);
        });
        if (earlier != alike.end()) {
            found.emplace_back(*earlier, index);
        } else {
            earlierEntries.insert(key, index);
        }
    }
    return found;
}

std::optional<QString> OutputPlan::textOf(const std::vector<Clash> &clashes) const
{
    constexpr std::size_t mostNamed = 5;
    if (clashes.empty()) {
        return std::nullopt;
    }
    QStringList named;
    for (const auto &[earlier, later] : std::span(clashes).first(std::min(clashes.size(), mostNamed))) {
        named.append(tr("%1\nand\n%2\nwould both be written to\n%3")
                         .arg(m_entries[earlier].source, m_entries[later].source, m_entries[later].output));
    }
    if (clashes.size() > mostNamed) {
        named.append(tr("and %n more", nullptr, static_cast<int>(clashes.size() - mostNamed)));
    }
    return named.join(QStringLiteral("\n\n"));
}

std::optional<QString> OutputPlan::collision(const NameTest &areOne) const
{
    return textOf(clashes(areOne));
}

std::optional<QString> OutputPlan::refuseCollisions(const NameTest &areOne)
{
    const std::vector<Clash> found = clashes(areOne);
    std::optional<QString> text = textOf(found);
    std::map<std::size_t, std::size_t> others; // of each that clashes, one that it clashes with
    for (const auto &[earlier, later] : found) {
        others.emplace(earlier, later);
        others.emplace(later, earlier);
    }
    std::vector<Entry> kept;
    for (std::size_t index = 0; index < m_entries.size() && !others.empty(); ++index) {
        const auto other = others.find(index);
        if (other == others.end()) {
            kept.push_back(m_entries[index]);
        } else {
            leaveOut(m_entries[index], PlanEntry::Action::Refuse,
                     tr("%1 would be written to the same file.").arg(m_entries[other->second].source));
        }
    }
    if (!others.empty()) {
        m_entries = std::move(kept);
    }
    return text;
}

void OutputPlan::leaveOut(const Entry &entry, PlanEntry::Action action, const QString &reason)
{
    m_leftOut.push_back(
        {.sources = {entry.source}, .output = entry.output, .action = action, .reason = reason});
}

QStringList OutputPlan::merges() const
{
    QMap<QString, QString> sourceOf; // folders
    QMap<QString, QString> others;
    for (const Entry &entry : m_entries) {
        if (entry.isCopy) {
            continue;
        }
        const QString from = PathNames::folderOf(entry.source);
        const QString first = sourceOf.value(entry.folder, from);
        sourceOf.insert(entry.folder, first);
        if (first != from) {
            others.insert(entry.folder, from);
        }
    }
    QStringList sentences;
    for (auto each = others.cbegin(); each != others.cend(); ++each) {
        sentences.append(
            tr("%1 gets files of %2 and of %3.").arg(each.key(), sourceOf.value(each.key()), each.value()));
    }
    return sentences;
}

std::vector<PlanEntry> OutputPlan::leftOut() const
{
    std::vector<PlanEntry> all = m_leftOut;
    for (const Entry &entry : m_entries) {
        if (entry.isDone) {
            all.push_back({.sources = {entry.source},
                           .output = entry.output,
                           .action = PlanEntry::Action::SkipDone,
                           .reason = entry.doneReason.isEmpty()
                                         ? tr("It was made before, and is as it was then.")
                                         : entry.doneReason});
        }
    }
    return all;
}

} // namespace kruv
