// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/FailureAdvice.h"

#include <QStringList>

#include <algorithm>

namespace kruv::FailureAdvice {

namespace {

struct Hint
{
    QStringView toolSays;
    const char *advice;
};

// The first that matches is given, so the plain causes stand before the catch-alls.
constexpr Hint hints[] = {
    {u"already exists", "Move the existing file away, choose another output folder, or allow overwriting."},
    {u"No space left", "Free some space on the output folder's disk and try again."},
    {u"can't open input file", "Check that the file is there and may be read."},
    {u"Permission denied", "Check that the output folder may be written to."},
    {u"Read-only file system", "Choose an output folder that may be written to."},
    {u"opening the output file",
     "Check that the output folder exists, may be written to, and has space left."},
    {u"disk is full", "Free some space on the output folder's disk and try again."},
    {u"disk probably full", "Free some space on the output folder's disk and try again."},
    {u"error while writing", "Check that the output folder's disk has space left."},
    {u"partial sample", "The source ends too early: it is damaged or was not copied whole."},
    {u"unexpected EOF", "The source ends too early: it is damaged or was not copied whole."},
    {u"MD5 signature mismatch", "The audio is not what was encoded: the file is damaged."},
    {u"FLAC__STREAM_DECODER", "The source is damaged or is not a FLAC file."},
    {u"not a WAVE file", "The file is not the kind of audio that its name says."},
    {u"unsupported format type", "The source holds a kind of audio that this format can't take."},
    {u"unknown file type", "The file is not the kind of audio that its name says."},
};

constexpr QStringView noise[] = {
    u"flac 1.",
    u"Copyright (C)",
    u"flac comes with ABSOLUTELY",
    u"welcome to redistribute",
    u"details.",
    u"% complete",
    u"Type `flac'",
    u"NOTE: --keep-foreign-metadata",
    u"state = FLAC__",
    u"you are",
};

bool isNoise(QStringView line)
{
    return line.trimmed().isEmpty() ||
           std::ranges::any_of(noise, [line](QStringView words) { return line.contains(words); });
}

} // namespace

QString essence(const QString &toolText)
{
    constexpr qsizetype mostLines = 6;
    QStringList kept;
    for (const QStringView line : QStringView(toolText).split(u'\n')) {
        if (!isNoise(line) && kept.size() < mostLines) {
            kept.append(line.trimmed().toString());
        }
    }
    return kept.join(u'\n');
}

QString advice(const QString &toolText)
{
    const auto *found = std::ranges::find_if(
        hints, [&toolText](const Hint &hint) { return toolText.contains(hint.toolSays); });
    return found == std::end(hints) ? QString() : QString::fromLatin1(found->advice);
}

} // namespace kruv::FailureAdvice
