// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// One job of a run, before it starts. What it has no path for is empty.
struct EntryRecord
{
    enum class Action {
        Make,
        /// A file that is there goes when the new one is whole.
        Replace,
        /// The source gets the output's name.
        Rename,
        /// The source, a file in the trash, gets the output's name.
        Restore,
        /// It makes no file of its own: checks, changes tags.
        Work
    };

    QString source = {};
    QString output = {};
    Action action = Action::Work;
    QString keepReason = {}; ///< why its original stays whatever was asked for; empty where it may go
};

} // namespace kruv
