// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/EntryEnd.h"
#include "journal/EntryRecord.h"

/// What the journal's file, and reports for programs, call things. Never change one: old journals have them.
namespace kruv::JournalWords {

inline constexpr const char *waiting = "waiting";
inline constexpr const char *running = "running";
inline constexpr const char *undone = "undone"; ///< what was done before

constexpr const char *of(EntryRecord::Action action)
{
    switch (action) {
    case EntryRecord::Action::Make:
        return "make";
    case EntryRecord::Action::Replace:
        return "replace";
    case EntryRecord::Action::Rename:
        return "rename";
    case EntryRecord::Action::Restore:
        return "restore";
    case EntryRecord::Action::Work:
        break;
    }
    return "work";
}

constexpr const char *of(EntryEnd::State state)
{
    switch (state) {
    case EntryEnd::State::Failed:
        return "error";
    case EntryEnd::State::Cancelled:
        return "canceled";
    case EntryEnd::State::Removed:
        return "removed";
    case EntryEnd::State::Done:
        break;
    }
    return "complete";
}

constexpr const char *of(Receipt::Fate fate)
{
    switch (fate) {
    case Receipt::Fate::Trashed:
        return "trashed";
    case Receipt::Fate::Deleted:
        return "deleted";
    case Receipt::Fate::Kept:
        break;
    }
    return "kept";
}

} // namespace kruv::JournalWords
