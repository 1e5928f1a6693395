// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/ToolStop.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <stop_token>

namespace kruv {

/// Runs a tool to its end on the calling thread and keeps what it printed. The exit status is not looked at;
/// callers judge by output(). Not for the main thread.
class NSTaskWrapperSync
{
public:
    /// `stop` ends the tool.
    NSTaskWrapperSync(const QString &launchPath, const QStringList &arguments,
                      std::stop_token stop = ToolStop::current());

    void appendToPATH(const QString &folder);
    void setDirectory(const QString &folder) { m_currentDirectoryPath = folder; }
    void setEnvironmentVariable(const QString &name, const QString &value)
    {
        m_environment.insert(name, value);
    }
    const QProcessEnvironment &environment() const { return m_environment; }

    /// Blocks until the tool has ended. A tool that can't be launched leaves output() saying so.
    void runTask();
    /// Both streams together, decoded as UTF-8.
    const QString &output() const { return m_totalOutput; }

private:
    QString m_launchPath;
    QStringList m_arguments;
    std::stop_token m_stop;
    QString m_currentDirectoryPath;
    QProcessEnvironment m_environment;
    QString m_totalOutput;
};

} // namespace kruv
