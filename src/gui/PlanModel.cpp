// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/PlanModel.h"

#include "base/PathNames.h"
#include "gui/PromptStyle.h"
#include "gui/QuietLabel.h"
#include "tabs/PlanWords.h"

#include <QGuiApplication>

#include <algorithm>

namespace kruv {

namespace {

/// Cuts `folder`, which ends with a slash, down to what is above `path`, too.
void shareFolder(QString &folder, const QString &path)
{
    if (folder.isNull()) {
        folder = path.left(path.lastIndexOf(u'/') + 1);
    }
    while (!path.startsWith(folder)) {
        folder.truncate(folder.lastIndexOf(u'/', -2) + 1);
    }
}

/// What is told of an entry, without the folders of its own files.
QString notesOf(const PlanEntry &entry)
{
    QString notes = PlanWords::notes(entry).join(u' ');
    for (const QString &path : entry.sources + QStringList{entry.output}) {
        if (const QString folder = PathNames::folderOf(path); folder.size() > 1) {
            notes.remove(folder + u'/');
        }
    }
    return notes;
}

QString onOneLine(QString text)
{
    return text.replace(u'\n', u' ');
}

} // namespace

bool PlanModel::isOf(const PlanEntry &entry, Kind kind)
{
    switch (kind) {
    case Kind::All:
        return true;
    case Kind::Make:
        return entry.isMade() && entry.action != PlanEntry::Action::Replace;
    case Kind::Replace:
        return entry.action == PlanEntry::Action::Replace;
    case Kind::Skip:
        return !entry.isMade() && entry.action != PlanEntry::Action::Refuse;
    case Kind::Refuse:
        return entry.action == PlanEntry::Action::Refuse;
    case Kind::Loss:
        break;
    }
    return entry.isMade() && (!entry.loss.isEmpty() || !entry.keepReason.isEmpty());
}

void PlanModel::setEntries(std::span<const PlanEntry> entries)
{
    m_entries.assign(entries.begin(), entries.end());
    QString sources;
    QString outputs;
    m_hasNotes = false;
    for (const PlanEntry &entry : m_entries) {
        for (const QString &source : entry.sources) {
            shareFolder(sources, source);
        }
        if (!entry.output.isEmpty()) {
            shareFolder(outputs, entry.output);
        }
        m_hasNotes = m_hasNotes || !PlanWords::notes(entry).isEmpty();
    }
    m_sourceFolder = sources.size();
    m_outputFolder = outputs.size();
    showRows();
}

void PlanModel::setKind(Kind kind)
{
    m_kind = kind;
    showRows();
}

void PlanModel::showRows()
{
    std::vector<std::size_t> rows;
    for (std::size_t index = 0; index < m_entries.size(); ++index) {
        if (isOf(m_entries[index], m_kind)) {
            rows.push_back(index);
        }
    }
    if (rows == m_rows && !rows.empty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columns - 1));
        return; // what is selected stays so
    }
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

qsizetype PlanModel::count(Kind kind) const
{
    return std::ranges::count_if(m_entries, [kind](const PlanEntry &entry) { return isOf(entry, kind); });
}

int PlanModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int PlanModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant PlanModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const PlanEntry &entry = entryAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return onOneLine(textOf(entry, index.column()));
    case Qt::ToolTipRole:
        return QStringLiteral("<span>%1</span>")
            .arg(detailsOf(index.row()).toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
    case Qt::ForegroundRole:
        return colorOf(entry, index.column());
    default:
        return {};
    }
}

QString PlanModel::textOf(const PlanEntry &entry, int column) const
{
    switch (column) {
    case Source:
        return entry.sources.value(0).mid(m_sourceFolder);
    case Output:
        return entry.output.mid(m_outputFolder);
    case Action:
        return PlanWords::action(entry);
    default:
        return notesOf(entry);
    }
}

QVariant PlanModel::colorOf(const PlanEntry &entry, int column) const
{
    const QPalette palette = QGuiApplication::palette();
    if (column == Action && entry.action == PlanEntry::Action::Refuse) {
        return PromptStyle::warningColor(palette);
    }
    return entry.isMade() ? QVariant() : QVariant(QuietLabel::tone(palette));
}

QVariant PlanModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    const QString titles[columns] = {tr("Source"), tr("Output"), tr("What happens"), tr("Notes")};
    return titles[section];
}

QString PlanModel::detailsOf(int row) const
{
    const PlanEntry &entry = entryAt(row);
    return (QStringList{PlanWords::paths(entry)} + PlanWords::notes(entry)).join(u'\n');
}

} // namespace kruv
