// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/NewFileNames.h"

#include "base/PathNames.h"

#include <QDir>

namespace kruv {

namespace {

/// Sheets come from systems that tell no capitals apart.
QString keyOf(const QString &path)
{
    return path.normalized(QString::NormalizationForm_C).toCaseFolded();
}

QString stemOf(const QString &key)
{
    return key.chopped(PathNames::extension(key).size());
}

} // namespace

NewFileNames::NewFileNames(const OutputPlan &plan)
{
    for (const OutputPlan::Entry &entry : plan.entries()) {
        if (entry.isCopy) {
            continue;
        }
        const QString key = keyOf(entry.source);
        m_outputs.insert(key, entry.output);
        const bool isTaken = m_outputsOfStems.contains(stemOf(key));
        m_outputsOfStems.insert(stemOf(key), isTaken ? QString() : entry.output);
    }
}

QString NewFileNames::of(const QString &name, const OutputPlan::Entry &sheet) const
{
    QString path = name;
    path.replace(u'\\', u'/');
    if (path.startsWith(u'/') || path.mid(1, 1) == u":") { // where it lay on another machine
        path = PathNames::lastPathComponent(path);
    }
    const QString key = keyOf(QDir::cleanPath(PathNames::folderOf(sheet.source) + u'/' + path));
    const QString output = m_outputs.value(key, m_outputsOfStems.value(stemOf(key)));
    return output.isEmpty() ? QString() : QDir(sheet.folder).relativeFilePath(output);
}

} // namespace kruv
