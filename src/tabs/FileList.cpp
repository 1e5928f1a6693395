// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/FileList.h"

#include "base/PathNames.h"

#include <QLocale>

#include <algorithm>
#include <iterator>

namespace kruv {

namespace {

/// The C locale has no natural order: without a language, English serves.
QLocale sortingLocale()
{
    const QLocale system = QLocale::system();
    return system.language() == QLocale::C ? QLocale(QLocale::English) : system;
}

} // namespace

FileList::Batch::Batch(const QStringList &paths)
{
    const QCollator collator = FileList::collator();
    m_entries.reserve(static_cast<std::size_t>(paths.size()));
    for (const QString &path : paths) {
        m_entries.push_back({path, collator.sortKey(path)});
    }
    std::ranges::sort(m_entries, precedes);
}

QCollator FileList::collator()
{
    QCollator collator(sortingLocale());
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

int FileList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant FileList::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return PathNames::lastPathComponent(at(index.row())).replace(u'\n', u' '); // a row is one line
    case Qt::ToolTipRole:
        return at(index.row());
    default:
        return {};
    }
}

QStringList FileList::paths() const
{
    QStringList all;
    all.reserve(count());
    for (const Entry &entry : m_entries) {
        all.append(entry.path);
    }
    return all;
}

int FileList::add(const QStringList &paths)
{
    return add(Batch(paths));
}

int FileList::add(Batch batch)
{
    m_paths.reserve(m_paths.size() + static_cast<qsizetype>(batch.m_entries.size()));
    std::erase_if(batch.m_entries, [this](const Entry &entry) {
        const qsizetype listed = m_paths.size();
        m_paths.insert(entry.path);
        return m_paths.size() == listed;
    });
    beginResetModel();
    const auto before = static_cast<std::ptrdiff_t>(m_entries.size());
    std::ranges::move(batch.m_entries, std::back_inserter(m_entries));
    std::ranges::inplace_merge(m_entries, m_entries.begin() + before, precedes);
    endResetModel();
    return static_cast<int>(batch.m_entries.size());
}

bool FileList::precedes(const Entry &one, const Entry &other)
{
    const int order = one.key.compare(other.key);
    return order != 0 ? order < 0 : one.path < other.path;
}

void FileList::removeRows(const QList<int> &rows)
{
    std::vector<bool> removed(m_entries.size(), false);
    for (const int row : rows) {
        removed[static_cast<std::size_t>(row)] = true;
    }
    beginResetModel();
    std::vector<Entry> kept;
    for (std::size_t row = 0; row < m_entries.size(); ++row) {
        if (removed[row]) {
            m_paths.remove(m_entries[row].path);
        } else {
            kept.push_back(std::move(m_entries[row]));
        }
    }
    m_entries = std::move(kept);
    endResetModel();
}

void FileList::removeExtension(const QString &extension)
{
    QList<int> rows;
    for (int row = 0; row < count(); ++row) {
        if (PathNames::extension(at(row)) == extension) {
            rows.append(row);
        }
    }
    removeRows(rows);
}

void FileList::clear()
{
    beginResetModel();
    m_entries.clear();
    m_paths.clear();
    endResetModel();
}

QStringList FileList::extensions() const
{
    QStringList found;
    QSet<QString> seen;
    for (const Entry &entry : m_entries) {
        const QString extension = PathNames::extension(entry.path);
        if (const auto before = seen.size(); seen.insert(extension), seen.size() > before) {
            found.append(extension);
        }
    }
    return found;
}

} // namespace kruv
