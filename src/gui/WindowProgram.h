// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

/// The program with its window.
namespace kruv::WindowProgram {

/// Opens the window on the tab with that label, where one is given, hands it the files and folders that
/// `paths` name, and returns the exit status when the person has quit. Without a display it says so and
/// ends the process with the status of wrong usage.
int run(int argc, char **argv, const QString &tab, const QStringList &paths);

} // namespace kruv::WindowProgram
