// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryRun.h"
#include "tabs/HistoryStates.h"

#include <QAbstractTableModel>

#include <vector>

namespace kruv {

/// The runs that the journal knows.
class HistoryRunsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { When, What, Jobs, State, columns };

    using QAbstractTableModel::QAbstractTableModel;

    void setRuns(std::vector<HistoryRun> runs);
    const std::vector<HistoryRun> &runs() const { return m_runs; }
    /// -1 where it is not there.
    int rowOf(std::int64_t run) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString textOf(const HistoryRun &run, int column) const;

    std::vector<HistoryRun> m_runs;
    mutable HistoryStates m_states;
};

} // namespace kruv
