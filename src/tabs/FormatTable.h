// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioFormatObject.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QStringList>

#include <optional>

namespace kruv {

class FileList;

/// A tab's list of files and, when asked for, three columns with what their formats are. Main thread only.
class FormatTable : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// `files` must outlive the table.
    explicit FormatTable(FileList &files);

    void setFormatsShown(bool shown);
    bool formatsShown() const { return m_formatsShown; }

    /// Formats by path. What is known of files that left the list stays known.
    void addFormats(const QHash<QString, AudioFormatObject> &formats);
    void forgetFormats();
    /// Listed files whose format is not known yet, at most `most`.
    QStringList unknown(qsizetype most) const;
    /// The one format that all listed files have; nothing where they differ or one can't be read.
    std::optional<AudioFormatObject> commonFormat() const;
    /// Of all listed files together, in seconds.
    double totalTime() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString formatText(const QString &path, int column) const;

    FileList &m_files;
    QHash<QString, AudioFormatObject> m_formatObjects;
    bool m_formatsShown = false;
};

} // namespace kruv
