// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/HistoryRunsModel.h"

#include "tabs/HistoryWords.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace kruv {

void HistoryRunsModel::setRuns(std::vector<HistoryRun> runs)
{
    beginResetModel();
    m_runs = std::move(runs);
    m_states = {}; // processes may have ended
    endResetModel();
}

int HistoryRunsModel::rowOf(std::int64_t run) const
{
    const auto found = std::ranges::find(m_runs, run, &HistoryRun::id);
    return found == m_runs.end() ? -1 : static_cast<int>(found - m_runs.begin());
}

int HistoryRunsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_runs.size());
}

int HistoryRunsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant HistoryRunsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    return textOf(m_runs[static_cast<std::size_t>(index.row())], index.column());
}

QString HistoryRunsModel::textOf(const HistoryRun &run, int column) const
{
    switch (column) {
    case When:
        return QLocale().toString(QDateTime::fromMSecsSinceEpoch(run.started), QLocale::ShortFormat);
    case What:
        return HistoryWords::command(run);
    case Jobs:
        return HistoryWords::counts(run);
    default:
        return HistoryWords::status(m_states.of(run));
    }
}

QVariant HistoryRunsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    const QString titles[columns] = {tr("When"), tr("What"), tr("Jobs"), tr("State")};
    return titles[section];
}

} // namespace kruv
