// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/FileStamp.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace kruv {

/// What a job left behind: which files it read, which it made, and what was shown of them.
struct Receipt
{
    /// What became of a source.
    enum class Fate { Kept, Trashed, Deleted };
    struct File
    {
        QString path;
        /// Of a source when the job began, of an output when it had its name.
        FileStamp stamp;
        Fate fate = Fate::Kept;
    };

    std::vector<File> sources = {};
    std::vector<File> outputs = {};
    // As in ProofNote; empty where nothing was shown.
    QString proof = {};
    QString digest = {};
    QString decoder = {};
    double seconds = 0.0; ///< that the job took
    /// Of a job that changed its source in place: what takes that back, in the form of its maker; empty where
    /// nothing can.
    QByteArray wayBack = {};
};

} // namespace kruv
