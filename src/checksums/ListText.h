// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace kruv {
class Preferences;
}

/// The text of checksum lists, written and read.
namespace kruv::ListText {

/// Between hash and name in an MD5 list and in a list of shntool's.
inline constexpr QStringView md5Separator = u" *";
inline constexpr QStringView st5Separator = u"  [shntool]  ";

// First lines of the lists written here: the program's version and the time.
QString md5Header();
QString ffpHeader();
QString st5Header();

/// Name of a list: the folder's name, or `plainName`, and ".<extension>".
QString fileName(const QString &folder, bool afterFolder, const QString &plainName, const QString &extension);

/// "<hash> *<name>" and a line break, in the layout of md5sum -b: where the name holds a line break, the line
/// begins with a backslash, and line breaks and backslashes in the name are written as escapes.
QString md5Line(const QString &hash, const QString &name);

/// The name that a file gets in an MD5 list. `inOneFolder`: all files of the list lie in the same folder.
QString nameInMd5List(const QString &file, const QString &listFolder, bool inOneFolder);

/// `name` below `folder`; slashes that the name begins with are dropped.
QString joined(const QString &folder, const QString &name);

/// Where a list over `folder` is saved: as fileName() has it, after the folder if `preferences` say so.
QString pathIn(const QString &folder, const Preferences &preferences, const QString &plainName,
               const QString &extension);

/// One line of a list, in text and as the bytes it was read from.
struct Line
{
    QString text;
    /// Empty where the list is UTF-8, so that the text has it all.
    QByteArray bytes;
};

/// Lines of a list in whatever encoding it is: UTF-8 with or without a byte-order mark, UTF-16 with one, else
/// what it looks like. Lines end with LF, CR LF or CR; empty ones are left out.
QList<Line> lines(const QByteArray &list);

struct Md5Entry
{
    QString hash;
    QString name;
    /// The name as the list's own bytes, where it isn't UTF-8.
    QByteArray encodedName;
};
/// Nothing for a line that isn't one of an MD5 list.
std::optional<Md5Entry> md5Entry(const Line &line);

} // namespace kruv::ListText
