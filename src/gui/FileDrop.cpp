// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/FileDrop.h"

#include <QDir>
#include <QMimeData>
#include <QUrl>

namespace kruv::FileDrop {

QStringList localPaths(const QMimeData &dropped)
{
    QStringList paths;
    const QList<QUrl> urls = dropped.urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile()) {
            paths.append(QDir::cleanPath(url.toLocalFile()));
        }
    }
    return paths;
}

QString pathOfArgument(const QString &argument)
{
    const QString path = argument.startsWith(QStringLiteral("file://"), Qt::CaseInsensitive)
                             ? QUrl(argument).toLocalFile()
                             : argument;
    return QDir::cleanPath(QDir().absoluteFilePath(path));
}

} // namespace kruv::FileDrop
