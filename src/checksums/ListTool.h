// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace kruv {

/// Runs a tool on a job's own thread, reading what it prints as it comes. The tool only reads files, so it is
/// ended at once when the job is cancelled.
class ListTool
{
public:
    /// A piece of output; false ends the tool.
    using Observer = std::function<bool(const QString &piece)>;

    /// `folder`: the tool's working directory, empty for inherited. Returns the exit status; -1
    /// for a tool that was ended. Throws std::runtime_error when it can't be launched.
    static int run(const QString &launchPath, const QStringList &arguments, const QString &folder,
                   const Observer &observer);
};

} // namespace kruv
