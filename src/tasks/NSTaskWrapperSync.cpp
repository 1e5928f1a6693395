// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/NSTaskWrapperSync.h"

#include "tasks/ToolCatalog.h"
#include "tasks/ToolEnvironment.h"

#include <QProcess>

namespace kruv {

NSTaskWrapperSync::NSTaskWrapperSync(const QString &launchPath, const QStringList &arguments)
    : m_launchPath(launchPath)
    , m_arguments(arguments)
    , m_environment(ToolEnvironment::base())
{
}

void NSTaskWrapperSync::appendToPATH(const QString &folder)
{
    ToolEnvironment::appendToPath(m_environment, folder);
}

void NSTaskWrapperSync::runTask()
{
    QProcess process;
    process.setProcessEnvironment(ToolEnvironment::unbuffered(m_environment));
    if (!m_currentDirectoryPath.isEmpty()) {
        process.setWorkingDirectory(m_currentDirectoryPath);
    }
    ToolEnvironment::prepare(process);
    process.start(m_launchPath, m_arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted(-1)) {
        m_totalOutput = ToolCatalog::launchFailureMessage(m_launchPath, process.errorString());
        return;
    }
    process.waitForFinished(-1);
    m_totalOutput = QString::fromUtf8(process.readAll());
}

} // namespace kruv
