// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/EntryEnd.h"
#include "journal/EntryRecord.h"
#include "journal/HistoryFile.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace kruv {

/// A job as the journal has it, with its receipt where there is one.
struct HistoryEntry
{
    std::int64_t id = 0; ///< 0 where the run is forgotten
    std::int64_t run = 0;
    QString command = {};     ///< of the run; empty where the run is forgotten
    QString process = {};     ///< of the run
    std::int64_t changed = 0; ///< milliseconds since 1970
    QString source = {};
    QString output = {};
    QString action = {}; ///< in JournalWords, as the state is
    QString state = {};
    QString reason = {};
    QString keepReason = {}; ///< as in EntryRecord

    bool hasReceipt = false;
    double seconds = 0.0;
    QString proof = {};
    QString digest = {};
    QString decoder = {};
    bool hasWayBack = false; ///< as in Receipt
    std::vector<HistoryFile> files = {};

    bool hasState(EntryEnd::State which) const;
    /// Neither done nor failed, undone nor taken out by a person: it is still to be done.
    bool isLeft() const;
    bool isUndone() const;
    bool hasAction(EntryRecord::Action which) const;
    /// Whether all outputs are there as the receipt has them.
    bool outputsAreAsTheyWere() const;
    /// The same for a source.
    bool sourceIsAsItWas(const QString &path) const;
};

} // namespace kruv
