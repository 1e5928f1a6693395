// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/HistoryJobsModel.h"

#include "formats/FailureAdvice.h"
#include "tabs/HistoryWords.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>

namespace kruv {

namespace {

QString sizesOf(const HistoryEntry &entry)
{
    qint64 before = 0;
    qint64 after = 0;
    for (const HistoryFile &file : entry.files) {
        (file.isOutput ? after : before) += file.stamp.size;
    }
    const QLocale locale;
    return after == 0 ? locale.formattedDataSize(before)
                      : QStringLiteral("%1 → %2").arg(locale.formattedDataSize(before),
                                                      locale.formattedDataSize(after));
}

} // namespace

void HistoryJobsModel::setEntries(std::vector<HistoryEntry> entries)
{
    beginResetModel();
    m_entries = std::move(entries);
    m_states = {}; // processes may have ended
    endResetModel();
}

int HistoryJobsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int HistoryJobsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant HistoryJobsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    if (role == Qt::TextAlignmentRole && index.column() == Seconds) {
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    }
    const HistoryEntry &entry = m_entries[static_cast<std::size_t>(index.row())];
    return role == Qt::DisplayRole || role == Qt::ToolTipRole ? QVariant(textOf(entry, index.column()))
                                                              : QVariant();
}

QString HistoryJobsModel::textOf(const HistoryEntry &entry, int column) const
{
    switch (column) {
    case When:
        return QLocale().toString(QDateTime::fromMSecsSinceEpoch(entry.changed), QLocale::ShortFormat);
    case State:
        return HistoryWords::status(m_states.of(entry));
    case Files:
        return HistoryWords::paths(entry);
    case Sizes:
        return entry.files.empty() ? QString() : sizesOf(entry);
    case Seconds:
        return entry.hasReceipt ? QLocale().toString(entry.seconds, 'f', 1) : QString();
    default:
        return entry.proof;
    }
}

QVariant HistoryJobsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    const QString titles[columns] = {tr("When"), tr("State"),   tr("Files"),
                                     tr("Size"), tr("Seconds"), tr("Proof")};
    return titles[section];
}

QString HistoryJobsModel::detailsOf(int row) const
{
    const HistoryEntry &entry = m_entries[static_cast<std::size_t>(row)];
    QStringList lines{HistoryWords::paths(entry)};
    if (const QStringList notes = HistoryWords::notes(entry); !notes.isEmpty()) {
        lines.append(notes.join(QStringLiteral(" · ")));
    }
    if (!entry.digest.isEmpty()) {
        lines.append(tr("MD5 of the samples: %1").arg(entry.digest));
    }
    lines.append(FailureAdvice::essence(entry.reason).split(u'\n', Qt::SkipEmptyParts));
    return lines.join(u'\n');
}

} // namespace kruv
