// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <QString>

#include <tstring.h>

namespace kruv {

// Text goes between the program and the tag library as UTF-8.
TagLib::String toTagLibString(const QString &text);
/// Never null.
QString fromTagLibString(const TagLib::String &text);

/// Sets the record's year, and where the text has five or more characters its month and day, from a date in
/// one of nine patterns ("2004-05-06", "05/06/2004", "2004"); the first that fits the whole text wins, digit
/// for digit. False, with the record left as it is, when none does.
bool readDate(const QString &text, TagsObject &record);

/// "year-month-day" when the record has both month and day, else the year alone.
QString joinedDate(const TagsObject &record);

/// True when a writer is to write this field's text.
inline bool isToBeWritten(const QString &text, bool writeEmptyTags)
{
    return writeEmptyTags || !text.isEmpty();
}

} // namespace kruv
