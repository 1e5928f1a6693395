// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/ExistingFiles.h"

#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace kruv {

/// Where each file of a command would be written: beside its source, or into one chosen folder.
class OutputPlan
{
    Q_DECLARE_TR_FUNCTIONS(kruv::OutputPlan)
public:
    struct Entry
    {
        QString source;
        QString folder;
        QString output;
        /// What lies there already is replaced.
        bool mayReplace = false;
    };

    /// `chosenFolder` empty means beside each source.
    OutputPlan(const QStringList &sources, const QString &chosenFolder, const QString &extension);

    const std::vector<Entry> &entries() const { return m_entries; }
    QStringList outputs() const;
    /// Outputs grouped by their folder, in list order.
    QHash<QString, QStringList> outputsByFolder() const;
    /// Names the sources that would give the same output, the first few, where there are such: writing both
    /// would lose one.
    std::optional<QString> collision() const;
    /// The outputs whose names are taken, in list order.
    QStringList existing() const;
    /// What becomes of those.
    void settleExisting(ExistingFiles choice);

private:
    std::vector<Entry> m_entries;
};

} // namespace kruv
