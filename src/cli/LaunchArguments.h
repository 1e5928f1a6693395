// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// What the program's arguments ask for: a command, or the window, perhaps with files.
struct LaunchArguments
{
    bool opensWindow = false;
    /// Label of the tab to open on; empty where none is named.
    QString tab;
    /// Paths and file:// URLs as given.
    QStringList paths;
    /// Not the window that is open already.
    bool inNewWindow = false;

    /// The window is asked for by nothing at all, by "--tab LABEL" and "--new-window", and by a first
    /// argument that names a file, unless it is the name of a command.
    static LaunchArguments parse(const QStringList &arguments);
};

} // namespace kruv
