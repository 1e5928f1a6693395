// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/HistoryEntry.h"

#include "journal/JournalWords.h"

#include <algorithm>

namespace kruv {

bool HistoryEntry::hasState(EntryEnd::State which) const
{
    return state == QLatin1StringView(JournalWords::of(which));
}

bool HistoryEntry::isLeft() const
{
    return !hasState(EntryEnd::State::Done) && !hasState(EntryEnd::State::Failed) &&
           !hasState(EntryEnd::State::Removed) && !isUndone();
}

bool HistoryEntry::isUndone() const
{
    return state == QLatin1StringView(JournalWords::undone);
}

bool HistoryEntry::hasAction(EntryRecord::Action which) const
{
    return action == QLatin1StringView(JournalWords::of(which));
}

bool HistoryEntry::outputsAreAsTheyWere() const
{
    return hasReceipt && std::ranges::all_of(files, [](const HistoryFile &file) {
               return !file.isOutput || file.isAsItWas();
           });
}

bool HistoryEntry::sourceIsAsItWas(const QString &path) const
{
    return std::ranges::any_of(files, [&path](const HistoryFile &file) {
        return !file.isOutput && file.path == path && file.isAsItWas();
    });
}

} // namespace kruv
