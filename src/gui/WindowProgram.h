// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

/// The program with its window.
namespace kruv::WindowProgram {

struct Wanted
{
    QString tab; ///< the label; empty for the one used last
    QStringList paths;
    bool newWindow = false;
};

/// Hands what is wanted to the window that is open, where there is one and no new one is wanted. Else opens
/// the window with it, and returns the exit status when the person has quit. Without a display it says so and
/// ends the process with the status of wrong usage.
int run(int argc, char **argv, const Wanted &wanted);

} // namespace kruv::WindowProgram
