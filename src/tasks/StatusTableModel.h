// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAbstractListModel>

#include <memory>
#include <unordered_map>
#include <vector>

namespace kruv {

class KruvTask;

/// The rows of the status panel: jobs in the order they were submitted, kept after their end until cleared. A
/// view draws each row from the job's own row fields. Main thread only.
class StatusTableModel : public QAbstractListModel
{
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    KruvTask &task(int row) const { return *m_rows[static_cast<std::size_t>(row)]; }
    /// Row of a job, or -1.
    int rowOf(const KruvTask &task) const;
    bool isEmpty() const { return m_rows.empty(); }

    void append(std::shared_ptr<KruvTask> task);
    void taskChanged(const KruvTask &task);
    /// Puts a row where another one is, which it follows or goes before.
    void move(int from, int to);
    /// Gives these jobs the rows that they have among them in the order given.
    void arrange(const std::vector<std::shared_ptr<KruvTask>> &tasks);
    void remove(const KruvTask &task);
    bool hasErrors() const;
    /// Drops the rows whose job has neither an error nor remarks to show.
    void removeSilent();
    /// Drops the others.
    void removeTelling();

private:
    void removeRows(bool telling);
    void countRows(int from, int end);

    std::vector<std::shared_ptr<KruvTask>> m_rows;
    std::unordered_map<const KruvTask *, int> m_rowOfTask;
};

} // namespace kruv
