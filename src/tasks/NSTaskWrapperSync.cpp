// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/NSTaskWrapperSync.h"

#include "tasks/ToolRun.h"

#include <utility>

namespace kruv {

NSTaskWrapperSync::NSTaskWrapperSync(const QString &launchPath, const QStringList &arguments,
                                     std::stop_token stop)
    : m_launchPath(launchPath)
    , m_arguments(arguments)
    , m_stop(std::move(stop))
    , m_environment(ToolEnvironment::base())
{
}

void NSTaskWrapperSync::appendToPATH(const QString &folder)
{
    ToolEnvironment::appendToPath(m_environment, folder);
}

void NSTaskWrapperSync::runTask()
{
    QString output;
    const ToolEnd end = ToolRun({m_launchPath, m_arguments, m_currentDirectoryPath, m_environment}, m_stop)
                            .run([&output](const QString &piece) { output += piece; });
    m_totalOutput = end.kind == ToolEnd::Kind::NotLaunched ? end.problem : output;
}

} // namespace kruv
