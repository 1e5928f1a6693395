// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// What was asked for.
struct RunRecord
{
    /// The command's name, or the label of the window's tab.
    QString command = {};
    /// Of the command line; none for the window.
    QStringList arguments = {};
    QString folder = {};  ///< the working folder
    QString process = {}; ///< who runs it, in words that name no other process, ever
    /// What its jobs have in common, so that they can be made once more; empty where they can't.
    QString plan = {};
};

} // namespace kruv
