// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryEntry.h"
#include "tabs/HistoryStates.h"

#include <QAbstractTableModel>

#include <vector>

namespace kruv {

/// The jobs of a run, or those that a search found.
class HistoryJobsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { When, State, Files, Sizes, Seconds, Proof, columns };

    using QAbstractTableModel::QAbstractTableModel;

    void setEntries(std::vector<HistoryEntry> entries);
    const std::vector<HistoryEntry> &entries() const { return m_entries; }
    /// All that is known of a job, a line each. Looks at its files.
    QString detailsOf(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString textOf(const HistoryEntry &entry, int column) const;

    std::vector<HistoryEntry> m_entries;
    mutable HistoryStates m_states;
};

} // namespace kruv
