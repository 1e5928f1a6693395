// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/Resources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace kruv {

namespace {

QString ownResources()
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    QString installed = QDir::cleanPath(programFolder.filePath(QStringLiteral("../libexec/kruv")));
    if (QFileInfo(installed).isDir()) {
        return installed;
    }
    return programFolder.filePath(QStringLiteral("resources"));
}

} // namespace

QString resourcesFolder()
{
    const QString overriding = qEnvironmentVariable("KRUV_RESOURCES");
    if (!overriding.isEmpty()) {
        return QDir::cleanPath(QDir(overriding).absolutePath());
    }
    static const QString own = ownResources();
    return own;
}

QString toolPath(const QString &toolName)
{
    return resourcesFolder() + u'/' + toolName;
}

} // namespace kruv
