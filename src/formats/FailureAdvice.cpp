// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FailureAdvice.h"

#include "base/StagingName.h"
#include "formats/Formats.h"
#include "formats/ToolWords.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace kruv::FailureAdvice {

namespace {

// Said of several failures.
constexpr const char *freeSomeSpace =
    QT_TRANSLATE_NOOP("FailureAdvice", "Free some space on the output folder's disk and try again.");
constexpr const char *checkFolder = QT_TRANSLATE_NOOP(
    "FailureAdvice", "Check that the output folder exists, may be written to, and has space left.");
constexpr const char *checkTheFile =
    QT_TRANSLATE_NOOP("FailureAdvice", "Check that the file is there and may be read.");
constexpr const char *nothingNeeded =
    QT_TRANSLATE_NOOP("FailureAdvice", "Files that need nothing are left as they are, without an output.");
constexpr const char *otherKind =
    QT_TRANSLATE_NOOP("FailureAdvice", "The file is not the kind of audio that its name says.");

// The plain causes come first, then what the formats know of their tools, then the catch-alls.
constexpr FailureHint plainCauses[] = {
    {u"opening the output file", checkFolder},
    {u"Nothing can be written in", checkFolder},
    {u"could not open output file",
     QT_TRANSLATE_NOOP("FailureAdvice",
                       "Move an existing file away, or check that the output folder may be written to.")},
    {u"already sector-aligned", nothingNeeded},
    {u"no silence to trim", nothingNeeded},
    {u"already has a canonical header", nothingNeeded},
    {u"is not CD-quality",
     QT_TRANSLATE_NOOP("FailureAdvice", "This needs files with 2 channels of 16 bits at 44.1 kHz.")},
    {u"differs among these files",
     QT_TRANSLATE_NOOP("FailureAdvice", "Only files of the same format can be joined; convert them first.")},
    {u"could not open split point file", checkTheFile},
    {u"value not in bytes, m:ss",
     QT_TRANSLATE_NOOP("FailureAdvice",
                       "The points are to be a cue sheet, or times like 3:05.32, one a line.")},
    {u"Argument list too long",
     QT_TRANSLATE_NOOP("FailureAdvice",
                       "These are too many files for one run of the tool: take fewer at a time.")},
    {u"No space left", freeSomeSpace},
    {u"header not found", otherKind},
    {u"header does not begin", otherKind},
    {u"can't open input file", checkTheFile},
    {u"can't be read: ", checkTheFile},
    {u"Permission denied", QT_TRANSLATE_NOOP("FailureAdvice", "Check that the folder may be written to.")},
    {u"Read-only file system",
     QT_TRANSLATE_NOOP("FailureAdvice", "The disk is read-only: make it writable, or write to another one.")},
    {u"disk is full", freeSomeSpace},
    {u"disk probably full", freeSomeSpace},
    {u"error while writing",
     QT_TRANSLATE_NOOP("FailureAdvice", "Check that the output folder's disk has space left.")},
};
constexpr FailureHint catchAlls[] = {
    {u"child encoder process",
     QT_TRANSLATE_NOOP("FailureAdvice",
                       "The encoder stopped: check that the output folder's disk has space left.")},
    {u"error while transferring",
     QT_TRANSLATE_NOOP("FailureAdvice",
                       "Check that the source is whole and the output folder's disk has space left.")},
    {u"write failed", freeSomeSpace},
    {u"WRITE_ERROR", freeSomeSpace},
    {u"can't create file", checkFolder},
    {u"can't close", checkFolder},
    {u"close failed", checkFolder},
    {u"Failed writing", checkFolder},
    {u"could not be saved", checkFolder},
    {u"was not written, whatever", checkFolder},
    {u"unknown file type", otherKind},
};

// Starts of lines that say nothing of the failure.
constexpr QStringView noise[] = {
    u"Type \"flac\"",
    u"NOTE: --keep-foreign-metadata",
};

/// What is printed besides by tools that belong to no format, and by several.
constexpr QStringView commonChatter[] = {
    u"\\x{08}+",
    u"Converting( \\[[^\\n]*?\\] (\\([\\d:.]+\\) (--> (\\[[^\\n]*?\\] ?:?)?)?)?)?",
    u"(Scanning|Trimming|Joining|Splitting|Stripping|Post-padding) \\[[^\\n]*: 100% OK\\n",
    u"shntool \\[split\\]: warning: (discarding initial|file \\d+ will)[^\\n]*",
};

/// The results hold the tools' pieces one behind the other: what matches stands for line breaks that are
/// gone.
const QRegularExpression &chatter()
{
    static const QRegularExpression expression = [] {
        QStringList patterns;
        const auto take = [&patterns](std::span<const QStringView> chatter) {
            for (const QStringView pattern : chatter) {
                patterns.append(pattern.toString());
            }
        };
        take(commonChatter);
        for (const Format *format : Formats::all()) {
            if (format->words) {
                take(format->words->chatter);
            }
        }
        return QRegularExpression(patterns.join(u'|'));
    }();
    return expression;
}

bool isNoise(QStringView line)
{
    static const QRegularExpression progress(QStringLiteral("^((\\d{1,3}%\\s*)*(OK|ERROR)?|.*:\\s*done)$"));
    const bool loneName = line.endsWith(u':') && !line.contains(u": ");
    return line.isEmpty() || loneName || progress.match(line).hasMatch() ||
           std::ranges::any_of(noise, [line](QStringView words) { return line.startsWith(words); });
}

QString adviceIn(std::span<const FailureHint> hints, const QString &toolText)
{
    const auto found = std::ranges::find_if(
        hints, [&toolText](const FailureHint &hint) { return toolText.contains(hint.toolSays); });
    return found == hints.end() ? QString() : QCoreApplication::translate("FailureAdvice", found->advice);
}

} // namespace

QString essence(const QString &toolText)
{
    constexpr qsizetype mostLines = 6; // the last ones: tools say first how they began
    QString plain = QString(toolText).replace(chatter(), QStringLiteral("\n"));
    StagingName::removeFolders(plain);
    QStringList kept;
    for (const QStringView line : QStringView(plain).split(u'\n')) {
        const QStringView words = line.trimmed();
        if (!isNoise(words) && !kept.contains(words)) {
            kept.append(words.toString());
        }
    }
    return kept.sliced(std::max<qsizetype>(0, kept.size() - mostLines)).join(u'\n');
}

QString advice(const QString &toolText)
{
    QString found = adviceIn(plainCauses, toolText);
    for (const Format *format : Formats::all()) {
        if (found.isEmpty() && format->words) {
            found = adviceIn(format->words->hints, toolText);
        }
    }
    return found.isEmpty() ? adviceIn(catchAlls, toolText) : found;
}

} // namespace kruv::FailureAdvice
