// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

namespace kruv {

/// The files of a job, as far as they are known before it starts.
struct JobOutline
{
    QStringList sources = {};
    QStringList outputs = {};
    /// What becomes of an output that is there.
    enum class Existing {
        /// It is replaced, or the job fails.
        Usual,
        /// It is compared with its source, and stays.
        Compared,
        /// It is compared with its source, and gets its tags or is made anew.
        Renewed
    };
    Existing existing = Existing::Usual;
    /// What becomes different in a file that is worked on itself, a clause each.
    QStringList changes = {};
    bool copies = false; ///< its source, as it is
};

} // namespace kruv
