// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/HistoryFile.h"

namespace kruv {

bool HistoryFile::isAsItWas() const
{
    const auto now = FileStamp::of(path);
    return now && now->size == stamp.size && now->seconds == stamp.seconds &&
           now->nanoseconds == stamp.nanoseconds;
}

} // namespace kruv
