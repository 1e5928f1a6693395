// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/VerifyOutput.h"

#include "tasks/ToolOutput.h"

#include <QStringList>

#include <algorithm>

namespace kruv::VerifyOutput {

namespace {

bool isBanner(QStringView line)
{
    return (line.contains(u"Version ") && line.contains(u"Audio ")) ||
           line.trimmed().startsWith(u"Copyright");
}

} // namespace

std::optional<double> percentDone(QStringView line)
{
    const qsizetype marker = line.lastIndexOf(u"% done");
    if (marker < 0) {
        return std::nullopt;
    }
    qsizetype start = marker;
    while (start > 0 && (line[start - 1].isDigit() || line[start - 1] == u'.')) {
        --start;
    }
    return ToolOutput::leadingNumber(line.sliced(start, marker - start));
}

std::optional<double> percentAfterProgress(QStringView line)
{
    constexpr QStringView marker = u"Progress: ";
    const qsizetype found = line.lastIndexOf(marker);
    if (found < 0) {
        return std::nullopt;
    }
    const QStringView rest = line.sliced(found + marker.size());
    const qsizetype percent = rest.indexOf(u'%');
    return percent < 0 ? std::nullopt : std::optional(ToolOutput::leadingNumber(rest.left(percent)));
}

QString namedLines(QStringView text, const QString &name)
{
    QString report;
    for (const QStringView line : text.split(u'\n')) {
        if (!line.trimmed().isEmpty() && !isBanner(line)) {
            report += QStringLiteral("%1: %2\n").arg(name, line.trimmed());
        }
    }
    return report;
}

QString fromLastProgress(const QString &text)
{
    const QList<QStringView> lines = QStringView(text).split(u'\n');
    const auto last = std::find_if(lines.crbegin(), lines.crend(),
                                   [](QStringView line) { return line.contains(u"Progress: "); });
    if (last == lines.crend()) {
        return text;
    }
    QString kept;
    for (auto line = std::prev(last.base()); line != lines.cend(); ++line) {
        if (!line->isEmpty()) {
            kept += *line;
            kept += u'\n';
        }
    }
    return kept;
}

} // namespace kruv::VerifyOutput
