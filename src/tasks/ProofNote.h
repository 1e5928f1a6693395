// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// What a job has shown of its outputs before they got their names.
struct ProofNote
{
    /// "same-audio", "same-set", "same-length" or "same-bytes", as reports have it; empty where nothing was
    /// shown.
    QString kind = {};
    /// MD5 of the outputs' samples, in hexadecimal digits, with a blank between those of outputs that were
    /// each proven by itself; empty where samples may differ.
    QString digest = {};
    QString decoder = {}; ///< of the outputs: "ffmpeg/flac"
    /// What a set job changed, in numbers, for a person; empty where nothing.
    QString words = {};
    /// Why nothing could be shown, a clause.
    QString unproven = {};

    bool holds() const { return !kind.isEmpty(); }
};

} // namespace kruv
