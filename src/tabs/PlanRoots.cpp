// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanRoots.h"

#include <QDir>

#include <algorithm>
#include <stdexcept>

namespace kruv {

PlanRoots::PlanRoots(const QStringList &texts)
{
    for (const QString &text : texts) {
        const auto middle = text.indexOf(u'=');
        const QString before = text.left(middle);
        const QString after = text.mid(middle + 1);
        if (middle < 0 || !before.startsWith(u'/') || after.isEmpty()) {
            throw std::runtime_error(tr("%1: give it as OLD=NEW: the folder that the plan names, from / on, "
                                        "and where that is here")
                                         .arg(text)
                                         .toStdString());
        }
        m_roots.emplace_back(QDir::cleanPath(before), QDir::cleanPath(QDir().absoluteFilePath(after)));
    }
    std::ranges::stable_sort(m_roots, std::ranges::greater(),
                             [](const auto &root) { return root.first.size(); });
}

QString PlanRoots::moved(const QString &path) const
{
    for (const auto &[before, after] : m_roots) {
        const qsizetype length = before == u"/" ? 0 : before.size();
        if (path == before || (path.startsWith(before) && path.mid(length).startsWith(u'/'))) {
            return QDir::cleanPath(after + path.mid(length));
        }
    }
    return path;
}

} // namespace kruv
