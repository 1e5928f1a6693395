// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/FlacOutput.h"

#include "tasks/ToolOutput.h"

#include <QStringList>

namespace kruv::FlacOutput {

namespace {

QString ratioText(QStringView piece, bool afterName)
{
    const qsizetype start = piece.indexOf(u"ratio=");
    if (start < 0) {
        return {};
    }
    QStringView ratio = piece.sliced(start);
    // Updates that arrived together run on: up to the digits of the next percentage, and never past a
    // backspace.
    if (const qsizetype percent = ratio.indexOf(u'%'); percent >= 2 && !afterName) {
        ratio = ratio.left(percent - 2);
    }
    if (const qsizetype backspace = ratio.indexOf(u'\b'); backspace >= 0) {
        ratio = ratio.left(backspace);
    }
    return ratio.toString();
}

QString reportedWhole(QStringView piece, const QString &name)
{
    return piece.endsWith(u"ok") ? okLines(name) : QStringLiteral("%1: %2\n").arg(name, piece);
}

} // namespace

EncodeProgress encodeProgress(QStringView piece, QStringView name)
{
    const QStringView ownText = ToolOutput::withoutLeadingName(piece, name);
    if (!ownText.contains(u'%')) {
        return {};
    }
    const bool afterName = piece.contains(u": ");
    const QStringView percentage = ToolOutput::percentageText(ownText);
    return {percentage.toString(), ToolOutput::leadingNumber(percentage), ratioText(ownText, afterName)};
}

std::optional<double> decodeProgress(QStringView piece, QStringView name)
{
    const QStringView ownText = ToolOutput::withoutLeadingName(piece, name);
    if (!ownText.contains(u"% ")) {
        return std::nullopt;
    }
    return ToolOutput::leadingNumber(ToolOutput::percentageText(ownText));
}

bool reportsDamage(QStringView piece, QStringView name)
{
    // The banner may have arrived in the same piece, before the name.
    const QString ownText = piece.toString().remove(name.toString());
    return ownText.contains(u"ERROR, ") || ownText.contains(u"*** Got error code");
}

bool reportsShortSource(QStringView piece)
{
    return piece.contains(u"WARNING: unexpected EOF; ") || piece.contains(u"_END_OF_STREAM events");
}

bool stumbled(QStringView report)
{
    return report.contains(u"_LOST_SYNC");
}

QString okLines(const QString &name)
{
    return QStringLiteral("%1: testing, 100% complete\n%1: ok\n").arg(name);
}

VerifyReport verifyReport(QStringView piece, const QString &name)
{
    if (!ToolOutput::withoutLeadingName(piece, name).contains(u'%')) {
        return {reportedWhole(piece, name), std::nullopt};
    }
    const QList<QStringView> parts = piece.split(u"testing, ");
    if (parts.size() % 2 != 0) {
        return {reportedWhole(piece, name), -1.0};
    }
    VerifyReport report{{}, -1.0};
    for (const QStringView part : parts) {
        if (part.endsWith(u"ok")) {
            report.lines += okLines(name);
            report.percentage = 100.0;
            break;
        }
        report.percentage = ToolOutput::leadingNumber(part);
        report.lines += QStringLiteral("%1: testing, %2% complete\n")
                            .arg(name, QString::number(*report.percentage, 'f', 6));
    }
    return report;
}

QString condensed(const QString &report, QStringView marker)
{
    const QStringList lines = report.split(u'\n');
    for (qsizetype index = lines.size() - 1; index >= 0; --index) {
        if (lines[index].contains(marker)) {
            return lines.mid(index).join(u'\n');
        }
    }
    return u'\n' + report;
}

} // namespace kruv::FlacOutput
