// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/OutputPlace.h"

#include "base/PathNames.h"

namespace kruv {

QString OutputPlace::folderFor(const QString &source) const
{
    const QString ofSource = PathNames::folderOf(source);
    if (folder.isEmpty()) {
        return ofSource;
    }
    QStringView outermost;
    for (const QString &root : roots) {
        const QStringView tree = root.endsWith(u'/') ? QStringView(root).chopped(1) : QStringView(root);
        const bool isAbove = source.startsWith(tree) && source.mid(tree.size(), 1) == u"/";
        if (isAbove && (outermost.isNull() || tree.size() < outermost.size())) {
            outermost = tree;
        }
    }
    return outermost.isNull() ? folder : folder + ofSource.mid(outermost.size());
}

} // namespace kruv
