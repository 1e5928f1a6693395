// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StatusTableModel.h"

#include "tasks/KruvTask.h"

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

void StatusTableModel::removeWithoutError()
{
    removeRowsWithError(false);
}

void StatusTableModel::removeErrors()
{
    removeRowsWithError(true);
}

void StatusTableModel::removeRowsWithError(bool error)
{
    beginResetModel();
    std::erase_if(m_rows, [error](const std::shared_ptr<KruvTask> &task) { return task->error() == error; });
    m_rowOfTask.clear();
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        m_rowOfTask.emplace(m_rows[row].get(), static_cast<int>(row));
    }
    endResetModel();
}

} // namespace kruv
