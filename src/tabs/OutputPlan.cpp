// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/OutputPlan.h"

#include "base/PathNames.h"

#include <QFileInfo>

#include <algorithm>

namespace kruv {

namespace {

/// Folders under the one name that the disk knows them by, each looked up once.
class RealFolders
{
public:
    const QString &of(const QString &folder)
    {
        const auto known = m_names.constFind(folder);
        if (known != m_names.constEnd()) {
            return *known;
        }
        const QString real = QFileInfo(folder).canonicalFilePath();
        return *m_names.insert(folder, real.isEmpty() ? folder : real);
    }

private:
    QHash<QString, QString> m_names;
};

} // namespace

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
    constexpr qsizetype mostNamed = 5;
    QHash<QString, QString> sourceOfOutput;
    RealFolders realFolders;
    QStringList collisions;
    for (const Entry &entry : m_entries) {
        // A folder may be in the list twice, once through a link.
        const QString output =
            realFolders.of(entry.folder) + u'/' + PathNames::lastPathComponent(entry.output);
        const auto earlier = sourceOfOutput.constFind(output);
        if (earlier != sourceOfOutput.constEnd()) {
            collisions.append(QStringLiteral("%1\nand\n%2\nwould both be written to\n%3")
                                  .arg(*earlier, entry.source, entry.output));
            continue;
        }
        sourceOfOutput.insert(output, entry.source);
    }
    if (collisions.isEmpty()) {
        return std::nullopt;
    }
    const qsizetype unnamed = collisions.size() - mostNamed;
    QString text = collisions.first(std::min(collisions.size(), mostNamed)).join(QStringLiteral("\n\n"));
    if (unnamed > 0) {
        text += QStringLiteral("\n\nand %1 more").arg(unnamed);
    }
    return text;
}

} // namespace kruv
