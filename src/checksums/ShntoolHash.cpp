// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/ShntoolHash.h"

#include "checksums/ListText.h"
#include "regex/Regex.h"
#include "tasks/ToolOutput.h"

#include <algorithm>

namespace kruv::ShntoolHash {

namespace {

/// Our adapter's, on a file that its decoder could not read whole.
const Regex &verdict()
{
    static const Regex expression(QStringLiteral(
        "(?m)^shntool \\[hash\\]: error: \\[(.+)\\] (is damaged: .*|can't be (?:decoded|read): .*)$"));
    return expression;
}

/// Of a hash line.
QString nameIn(QStringView line)
{
    const qsizetype separator = line.indexOf(ListText::st5Separator);
    return line.sliced(separator + ListText::st5Separator.size()).toString();
}

} // namespace

std::optional<double> percentage(QStringView line)
{
    const qsizetype percent = line.lastIndexOf(u'%');
    if (percent < 0 || isHashLine(line)) {
        return std::nullopt;
    }
    // The name comes first and may hold anything; the length in parentheses ends it.
    const QStringView before = line.left(percent);
    const qsizetype colon = before.lastIndexOf(u") :");
    return ToolOutput::leadingNumber(colon < 0 ? before : before.sliced(colon + 3));
}

QString currentName(QStringView line)
{
    constexpr QStringView start = u"Hashing [";
    const qsizetype end = line.lastIndexOf(u"] (");
    return line.startsWith(start) && end > start.size()
               ? line.sliced(start.size(), end - start.size()).toString()
               : QString();
}

bool isHashLine(QStringView line)
{
    constexpr qsizetype md5Digits = 32;
    const QStringView digits = line.left(md5Digits);
    return digits.size() == md5Digits && line.sliced(md5Digits).startsWith(ListText::st5Separator) &&
           std::ranges::all_of(digits,
                               [](QChar digit) { return QStringView(u"0123456789abcdef").contains(digit); });
}

QStringList unsound(const QString &text)
{
    QStringList names;
    for (const auto &found : verdict().findAll(text)) {
        names.append(found.captures[1]);
    }
    return names;
}

QStringList hashLines(const QString &text)
{
    const QStringList left = unsound(text);
    QStringList found;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        if (isHashLine(line) && !left.contains(nameIn(line))) {
            found.append(line.toString());
        }
    }
    return found;
}

QStringList complaints(const QString &text)
{
    const QStringList left = unsound(text);
    QStringList found;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const bool isProgress = line.startsWith(u"Hashing [");
        const bool isSaidBetter = std::ranges::any_of(left, [line](const QString &name) {
            return line.endsWith(QStringLiteral("file: [%1]").arg(name));
        });
        if (!isProgress && !isSaidBetter && !isHashLine(line) && !line.trimmed().isEmpty()) {
            found.append(verdict().replace(line, u"$1 $2.").trimmed());
        }
    }
    found.removeDuplicates();
    return found;
}

QList<QStringList> runs(const QStringList &names)
{
    constexpr qsizetype oneWrite = 4000; // bytes; the tool's buffer is 4096
    constexpr qsizetype besideTheName = 32 + ListText::st5Separator.size() + 1;
    QList<QStringList> all;
    qsizetype size = oneWrite;
    for (const QString &name : names) {
        const qsizetype line = name.toUtf8().size() + besideTheName;
        if (size + line > oneWrite) {
            all.append(QStringList());
            size = 0;
        }
        all.last().append(name);
        size += line;
    }
    return all;
}

} // namespace kruv::ShntoolHash
