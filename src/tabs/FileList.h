// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAbstractListModel>
#include <QCollator>
#include <QSet>
#include <QStringList>

#include <vector>

namespace kruv {

/// A tab's input files: whole paths without duplicates in natural order (case-insensitive, numbers by value).
/// Shows the last path component, with the whole path as tool tip. Main thread only.
class FileList : public QAbstractListModel
{
    Q_OBJECT
public:
    class Batch;

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    int count() const { return static_cast<int>(m_entries.size()); }
    bool isEmpty() const { return m_entries.empty(); }
    const QString &at(int row) const { return m_entries[static_cast<std::size_t>(row)].path; }
    bool contains(const QString &path) const { return m_paths.contains(path); }
    QStringList paths() const;
    /// Shares its data with the list until that changes.
    QSet<QString> pathSet() const { return m_paths; }

    /// Adds those not yet listed. Returns how many were added.
    int add(const QStringList &paths);
    int add(Batch batch);
    void removeRows(const QList<int> &rows);
    /// Removes every path whose extension is precisely `extension`, case included.
    void removeExtension(const QString &extension);
    void clear();
    /// The natural order.
    static QCollator collator();
    /// Distinct extensions in list order, as written.
    QStringList extensions() const;

private:
    struct Entry
    {
        QString path;
        QCollatorSortKey key;
    };
    static bool precedes(const Entry &one, const Entry &other);

    std::vector<Entry> m_entries;
    QSet<QString> m_paths;
};

/// Paths made ready to be listed. Making it is the larger part of the work of adding many, and may be done on
/// any thread.
class FileList::Batch
{
public:
    explicit Batch(const QStringList &paths);

private:
    friend class FileList;
    std::vector<Entry> m_entries; // in list order
};

} // namespace kruv
