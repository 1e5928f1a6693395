// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// How the run of a tool ended, and the one place that judges it.
struct ToolEnd
{
    enum class Kind {
        /// By itself, with an exit status.
        Exited,
        /// By a signal that was not ours.
        Signalled,
        /// By us: nobody wanted it any more, or its time was over.
        Ended,
        NotLaunched
    };

    Kind kind = Kind::NotLaunched;
    /// Exit status, or the signal's number.
    int number = 0;
    bool printedText = false;
    /// Why it was not launched: a sentence for a person.
    QString problem;

    bool succeeded() const { return kind == Kind::Exited && number == 0; }
    /// What to add to the output of a tool that did not succeed, where it said nothing itself: empty, or a
    /// line with its break.
    QString complaint(const QString &launchPath) const;
    /// Throws std::runtime_error with `problem` where the tool was not launched.
    void requireLaunched() const;
};

} // namespace kruv
