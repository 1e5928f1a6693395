// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/PlanEntry.h"

#include <QAbstractTableModel>
#include <QString>

#include <span>
#include <vector>

namespace kruv {

/// The entries of a plan, all or those of one kind. Names are shown from the folder on that all of them
/// share.
class PlanModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Source, Output, Action, Notes, columns };
    enum class Kind { All, Make, Replace, Skip, Refuse, Loss };

    using QAbstractTableModel::QAbstractTableModel;

    void setEntries(std::span<const PlanEntry> entries);
    void setKind(Kind kind);
    Kind kind() const { return m_kind; }
    qsizetype count(Kind kind) const;
    /// Whether there is anything to be told besides the names.
    bool hasNotes() const { return m_hasNotes; }
    /// All that is known of the file in that row, a line each.
    QString detailsOf(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static bool isOf(const PlanEntry &entry, Kind kind);
    void showRows();
    const PlanEntry &entryAt(int row) const { return m_entries[m_rows[static_cast<std::size_t>(row)]]; }
    QString textOf(const PlanEntry &entry, int column) const;
    QVariant colorOf(const PlanEntry &entry, int column) const;

    std::vector<PlanEntry> m_entries;
    std::vector<std::size_t> m_rows; // that are shown
    Kind m_kind = Kind::All;
    bool m_hasNotes = false;
    // Of the folders' shared beginnings, with their last slash.
    qsizetype m_sourceFolder = 0;
    qsizetype m_outputFolder = 0;
};

} // namespace kruv
