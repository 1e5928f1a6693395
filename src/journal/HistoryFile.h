// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/FileStamp.h"
#include "journal/Receipt.h"

#include <QString>

namespace kruv {

/// A file of a receipt.
struct HistoryFile
{
    bool isOutput = false;
    QString path = {};
    FileStamp stamp = {};
    QString fate = {}; ///< of a source, in JournalWords

    bool hasFate(Receipt::Fate which) const;
    /// Whether it is there as the receipt has it: by what a copy of the file, or another mount, would keep
    /// too.
    bool isAsItWas() const;
};

} // namespace kruv
