// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <QString>
#include <QStringList>

#include <tbytevector.h>
#include <tstring.h>
#include <tstringlist.h>
#include <utility>

namespace kruv {

// Text goes between the program and the tag library as UTF-8.
TagLib::String toTagLibString(const QString &text);
/// Never null.
QString fromTagLibString(const TagLib::String &text);

TagLib::StringList toTagLibList(const QStringList &values);
QStringList fromTagLibList(const TagLib::StringList &values);
QByteArray fromTagLibBytes(const TagLib::ByteVector &bytes);
TagLib::ByteVector toTagLibBytes(const QByteArray &bytes);

/// Sets the record's year, and where the text has five or more characters its month and day, from a date in
/// one of nine patterns ("2004-05-06", "05/06/2004", "2004"); the first that fits the whole text wins, digit
/// for digit. False, with the record left as it is, when none does.
bool readDate(const QString &text, TagsObject &record);

/// The same; what is no such date goes through the record as it is.
void readDateOrKeep(const QString &text, TagsObject &record);

/// "year-month-day" when the record has both month and day, else the year alone; a date that could not be
/// taken apart where it has none of them.
QString joinedDate(const TagsObject &record);

/// A number and the total. Some programs put both into the number's field, as "3/12".
std::pair<QString, QString> numberAndTotal(const TagsObject &record, TagField number, TagField total);

/// True when a writer is to write this field's text.
inline bool isToBeWritten(const QString &text, bool writeEmptyTags)
{
    return writeEmptyTags || !text.isEmpty();
}

} // namespace kruv
