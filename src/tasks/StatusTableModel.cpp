// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StatusTableModel.h"

#include "tasks/KruvTask.h"

#include <algorithm>
#include <utility>

namespace kruv {

int StatusTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant StatusTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const KruvTask &row = task(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return row.textField().text;
    case Qt::AccessibleDescriptionRole:
        return row.topTextField().text;
    default:
        return {};
    }
}

int StatusTableModel::rowOf(const KruvTask &task) const
{
    const auto found = m_rowOfTask.find(&task);
    return found == m_rowOfTask.end() ? -1 : found->second;
}

void StatusTableModel::append(std::shared_ptr<KruvTask> task)
{
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_rowOfTask.emplace(task.get(), row);
    m_rows.push_back(std::move(task));
    endInsertRows();
}

void StatusTableModel::taskChanged(const KruvTask &task)
{
    if (const int row = rowOf(task); row >= 0) {
        Q_EMIT dataChanged(index(row), index(row));
    }
}

bool StatusTableModel::hasErrors() const
{
    return std::ranges::any_of(m_rows, &KruvTask::error);
}

void StatusTableModel::removeSilent()
{
    removeRows(false);
}

void StatusTableModel::removeTelling()
{
    removeRows(true);
}

void StatusTableModel::removeRows(bool telling)
{
    beginResetModel();
    std::erase_if(m_rows, [telling](const std::shared_ptr<KruvTask> &task) {
        return (task->error() || task->leavesRemarks()) == telling;
    });
    m_rowOfTask.clear();
    countRows(0, rowCount());
    endResetModel();
}

void StatusTableModel::countRows(int from, int end)
{
    for (int row = from; row < end; ++row) {
        m_rowOfTask[&task(row)] = row;
    }
}

void StatusTableModel::move(int from, int to)
{
    if (!beginMoveRows({}, from, from, {}, to > from ? to + 1 : to)) {
        return;
    }
    const auto first = m_rows.begin();
    if (from < to) {
        std::rotate(first + from, first + from + 1, first + to + 1);
    } else {
        std::rotate(first + to, first + from, first + from + 1);
    }
    countRows(std::min(from, to), std::max(from, to) + 1);
    endMoveRows();
}

void StatusTableModel::arrange(const std::vector<std::shared_ptr<KruvTask>> &tasks)
{
    std::vector<int> rows;
    rows.reserve(tasks.size());
    for (const std::shared_ptr<KruvTask> &task : tasks) {
        rows.push_back(rowOf(*task));
    }
    const std::vector<int> from = rows;
    std::ranges::sort(rows);
    if (from == rows) {
        return;
    }
    Q_EMIT layoutAboutToBeChanged();
    QModelIndexList before;
    QModelIndexList after;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        m_rows[static_cast<std::size_t>(rows[index])] = tasks[index];
        m_rowOfTask[tasks[index].get()] = rows[index];
        before.append(this->index(from[index]));
        after.append(this->index(rows[index]));
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

void StatusTableModel::remove(const KruvTask &task)
{
    if (const int row = rowOf(task); row >= 0) {
        beginRemoveRows({}, row, row);
        m_rowOfTask.erase(&task);
        m_rows.erase(m_rows.begin() + row);
        countRows(row, rowCount());
        endRemoveRows();
    }
}

} // namespace kruv
