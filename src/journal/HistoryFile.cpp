// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/HistoryFile.h"

#include "journal/JournalWords.h"

namespace kruv {

bool HistoryFile::hasFate(Receipt::Fate which) const
{
    return fate == QLatin1StringView(JournalWords::of(which));
}

bool HistoryFile::isAsItWas() const
{
    const auto now = FileStamp::of(path);
    return now && now->size == stamp.size && now->seconds == stamp.seconds &&
           now->nanoseconds == stamp.nanoseconds;
}

} // namespace kruv
