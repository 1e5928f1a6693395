// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// One file that a command would make, or leave, and why.
struct PlanEntry
{
    enum class Action {
        Make,
        /// The file that is there goes when the new one is whole.
        Replace,
        /// The file that is there gets its source's tags where it holds the same audio; else it is replaced.
        Update,
        /// The file that is there stays where it holds its source's audio; else that is told as a failure.
        Check,
        /// The source gets the output's name.
        Rename,
        /// The source goes along as it is; in a cue sheet the names of files change.
        Copy,
        /// The source itself is worked on, or only read.
        Work,
        /// An earlier run made it, and it is as that left it.
        SkipDone,
        /// There is a file of its name, which stays.
        SkipExisting,
        /// It is of another kind than those that the command takes.
        SkipOther,
        /// It can't be made, or must not be.
        Refuse
    };

    QStringList sources = {};
    QString output = {}; ///< empty where the sources themselves are worked on
    Action action = Action::Make;
    QString reason = {};    ///< of what is not made, a sentence
    QStringList notes = {}; ///< what a person should know all the same, a sentence each
    bool deletesOriginal = false;
    QString keepReason = {}; ///< why the original stays though originals go, a clause
    QString loss = {};       ///< what goes with an original, because the output can't hold it, a clause
    qint64 sourceBytes = 0;
    qint64 bytes = 0;     ///< of the output, estimated; 0 where nothing is known
    double seconds = 0.0; ///< estimated; 0 where nothing is known

    bool isMade() const { return action <= Action::Work; }
};

} // namespace kruv
