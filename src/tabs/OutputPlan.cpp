// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/OutputPlan.h"

#include "base/InParallel.h"
#include "base/PathNames.h"
#include "tasks/FileCommit.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cstddef>

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
    const QString base = path.chopped(extension.size() + 1);
    for (int number = 2;; ++number) {
        QString name = QStringLiteral("%1 (%2).%3").arg(base, QString::number(number), extension);
        if (!FileCommit::isTaken(name) && !planned.contains(FoldedNames::key(name))) {
            return name;
        }
    }
}

} // namespace

OutputPlan::OutputPlan(const QStringList &sources, const QString &chosenFolder, const QString &extension)
{
    m_entries.reserve(static_cast<std::size_t>(sources.size()));
    for (const QString &source : sources) {
        const QString folder = chosenFolder.isEmpty() ? PathNames::folderOf(source) : chosenFolder;
        m_entries.push_back({source, folder, PathNames::outputPath(folder, source, extension)});
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
        all.append(entry.output);
    }
    return all;
}

QStringList OutputPlan::folders() const
{
    QStringList all;
    for (const Entry &entry : m_entries) {
        all.append(entry.folder);
    }
    all.removeDuplicates();
    return all;
}

QStringList OutputPlan::outputsFor(const List &list) const
{
    QStringList about;
    for (const Entry &entry : m_entries) {
        if (list.folder.isEmpty() || entry.folder == list.folder) {
            about.append(entry.output);
        }
    }
    return about;
}

bool OutputPlan::isInTheWay(const Entry &entry)
{
    return !entry.isDone && FileCommit::isTaken(entry.output);
}

/// A list of outputs that were made before is their own.
bool OutputPlan::isInTheWay(const List &list) const
{
    return std::ranges::none_of(m_entries, &Entry::isDone) && FileCommit::isTaken(list.path);
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
    if (choice == ExistingFiles::Skip) {
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

std::optional<QString> OutputPlan::collision(const NameTest &areOne) const
{
    constexpr qsizetype mostNamed = 5;
    QMultiHash<QString, const Entry *> earlierEntries;
    earlierEntries.reserve(static_cast<qsizetype>(m_entries.size()));
    RealFolders realFolders;
    QStringList collisions;
    for (const Entry &entry : m_entries) {
        // A folder may be in the list twice, once through a link.
        const QString folder = realFolders.of(entry.folder);
        const QString name = PathNames::lastPathComponent(entry.output);
        const QString key = folder + u'/' + FoldedNames::key(name);
        const QList<const Entry *> alike = earlierEntries.values(key);
        const auto earlier = std::ranges::find_if(alike, [&](const Entry *each) {
            const QString other = PathNames::lastPathComponent(each->output);
            return other == name || areOne(folder, other, name);
        });
        if (earlier != alike.end()) {
            collisions.append(tr("%1\nand\n%2\nwould both be written to\n%3")
                                  .arg((*earlier)->source, entry.source, entry.output));
            continue;
        }
        earlierEntries.insert(key, &entry);
    }
    if (collisions.isEmpty()) {
        return std::nullopt;
    }
    const qsizetype unnamed = collisions.size() - mostNamed;
    QString text = collisions.first(std::min(collisions.size(), mostNamed)).join(QStringLiteral("\n\n"));
    if (unnamed > 0) {
        text += QStringLiteral("\n\n") + tr("and %n more", nullptr, static_cast<int>(unnamed));
    }
    return text;
}

} // namespace kruv
