// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "lossless/OutputPlan.h"

#include "app/PathNames.h"

namespace kruv {

OutputPlan::OutputPlan(const QStringList &sources, const QString &chosenFolder, const QString &extension)
{
    m_entries.reserve(static_cast<std::size_t>(sources.size()));
    for (const QString &source : sources) {
        const QString folder = chosenFolder.isEmpty() ? PathNames::folderOf(source) : chosenFolder;
        m_entries.push_back({source, folder, PathNames::outputPath(folder, source, extension)});
    }
}

QStringList OutputPlan::outputs() const
{
    QStringList all;
    for (const Entry &entry : m_entries) {
        all.append(entry.output);
    }
    return all;
}

QHash<QString, QStringList> OutputPlan::outputsByFolder() const
{
    QHash<QString, QStringList> grouped;
    for (const Entry &entry : m_entries) {
        grouped[entry.folder].append(entry.output);
    }
    return grouped;
}

std::optional<QString> OutputPlan::collision() const
{
    QHash<QString, QString> sourceOfOutput;
    for (const Entry &entry : m_entries) {
        const auto earlier = sourceOfOutput.constFind(entry.output);
        if (earlier != sourceOfOutput.constEnd()) {
            return QStringLiteral("%1\nand\n%2\nwould both be written to\n%3")
                .arg(*earlier, entry.source, entry.output);
        }
        sourceOfOutput.insert(entry.output, entry.source);
    }
    return std::nullopt;
}

} // namespace kruv
