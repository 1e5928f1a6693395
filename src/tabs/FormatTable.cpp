// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/FormatTable.h"

#include "tabs/FileList.h"
#include "util/FormatSummary.h"

#include <QLocale>

namespace kruv {

namespace {

enum Column { FileName, Length, SampleRate, BitDepth };

const QStringList &titles()
{
    static const QStringList all{QStringLiteral("fileName"), FormatTable::tr("length (min)"),
                                 FormatTable::tr("sample rate"), FormatTable::tr("bit depth")};
    return all;
}

} // namespace

FormatTable::FormatTable(FileList &files)
    : m_files(files)
{
    connect(&files, &QAbstractItemModel::modelAboutToBeReset, this, &FormatTable::beginResetModel);
    connect(&files, &QAbstractItemModel::modelReset, this, &FormatTable::endResetModel);
}

void FormatTable::setFormatsShown(bool shown)
{
    if (shown != m_formatsShown) {
        beginResetModel();
        m_formatsShown = shown;
        endResetModel();
    }
}

void FormatTable::addFormats(const QHash<QString, AudioFormatObject> &formats)
{
    m_formatObjects.insert(formats);
    if (m_formatsShown && rowCount() > 0) {
        Q_EMIT dataChanged(index(0, Length), index(rowCount() - 1, BitDepth));
    }
}

void FormatTable::forgetFormats()
{
    m_formatObjects.clear();
}

QStringList FormatTable::unknown(qsizetype most) const
{
    QStringList found;
    for (int row = 0; row < m_files.count() && found.size() < most; ++row) {
        if (!m_formatObjects.contains(m_files.at(row))) {
            found.append(m_files.at(row));
        }
    }
    return found;
}

std::optional<AudioFormatObject> FormatTable::commonFormat() const
{
    if (m_files.isEmpty()) {
        return std::nullopt;
    }
    const AudioFormatObject first = m_formatObjects.value(m_files.at(0));
    bool same = first.sampleRate > 0 && first.channels > 0;
    for (int row = 1; row < m_files.count() && same; ++row) {
        same = haveSameFormat(first, m_formatObjects.value(m_files.at(row)));
    }
    return same ? std::optional(first) : std::nullopt;
}

double FormatTable::totalTime() const
{
    double seconds = 0;
    for (int row = 0; row < m_files.count(); ++row) {
        seconds += m_formatObjects.value(m_files.at(row)).time();
    }
    return seconds;
}

int FormatTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_files.count();
}

int FormatTable::columnCount(const QModelIndex &parent) const
{
    if (parent.isValid()) {
        return 0;
    }
    return m_formatsShown ? static_cast<int>(titles().size()) : 1;
}

QVariant FormatTable::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.column() == FileName) {
        return index.isValid() ? m_files.data(m_files.index(index.row()), role) : QVariant();
    }
    switch (role) {
    case Qt::DisplayRole:
        return formatText(m_files.at(index.row()), index.column());
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    default:
        return {};
    }
}

QString FormatTable::formatText(const QString &path, int column) const
{
    constexpr double kilo = 1000.0;
    const auto found = m_formatObjects.constFind(path);
    if (found == m_formatObjects.cend()) {
        return {};
    }
    switch (column) {
    case Length:
        return parseTimeAsString(found->time());
    case SampleRate:
        return tr("%1 kHz").arg(found->sampleRate / kilo);
    default:
        return QString::number(found->bitsPerChannel);
    }
}

QVariant FormatTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return static_cast<int>((section == FileName ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    }
    return role == Qt::DisplayRole ? titles().value(section) : QVariant();
}

} // namespace kruv
