// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/FailureAdvice.h"

#include <QRegularExpression>
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
    {u"already exists, use -f",
     "Move the existing file away, choose another output folder, or allow overwriting."},
    {u"(yes/no/all)?", "Move the existing file away or choose another output folder."},
    {u"already exists and was left", "Move the existing file away or choose another output folder."},
    {u"could not open output file",
     "Move an existing file away, or check that the output folder may be written to."},
    {u"Nothing can be written in the output folder",
     "Check that the output folder exists, may be written to, and has space left."},
    {u"already sector-aligned", "Files that need nothing are left as they are, without an output."},
    {u"no silence to trim", "Files that need nothing are left as they are, without an output."},
    {u"already has a canonical header", "Files that need nothing are left as they are, without an output."},
    {u"is not CD-quality", "This needs files with 2 channels of 16 bits at 44.1 kHz."},
    {u"differs among these files", "Only files of the same format can be joined; convert them first."},
    {u"could not open split point file", "Check that the file is there and may be read."},
    {u"value not in bytes, m:ss", "The points are to be a cue sheet, or times like 3:05.32, one a line."},
    {u"Argument list too long", "These are too many files for one run of the tool: take fewer at a time."},
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
    {u"END_OF_STREAM events", "The source ends too early: it is damaged or was not copied whole."},
    {u"decoded number of samples", "The source ends too early: it is damaged or was not copied whole."},
    {u"MD5 signature mismatch", "The audio is not what was encoded: the file is damaged."},
    {u"FLAC__STREAM_DECODER_ERROR", "The source is damaged or is not a FLAC file."},
    {u"FLAC__STREAM_DECODER_ABORTED", "Check that the output folder's disk has space left."},
    {u"FLAC__STREAM_DECODER", "The source is damaged or is not a FLAC file."},
    {u"not a WAVE file", "The file is not the kind of audio that its name says."},
    {u"unsupported number of channels", "flac can't take this number of channels from this kind of file."},
    {u"'data' chunk has size of 0", "The source holds no audio."},
    {u"'SSND' chunk has size <= 8", "The source holds no audio."},
    {u"unsupported format type", "The source holds a kind of audio that this format can't take."},
    {u"the source is damaged", "The source ends too early: it is damaged or was not copied whole."},
    {u"Error writing mp3 output", "Free some space on the output folder's disk and try again."},
    {u"child encoder process", "The encoder stopped: check that the output folder's disk has space left."},
    {u"error while transferring",
     "Check that the source is whole and the output folder's disk has space left."},
    {u"write failed", "Free some space on the output folder's disk and try again."},
    {u"there is no HE-AAC of", "Choose a bit rate that suits this source."},
    {u"unknown file type", "The file is not the kind of audio that its name says."},
};

// Starts of lines that say nothing of the failure.
constexpr QStringView noise[] = {
    u"Type \"flac\"",
    u"NOTE: --keep-foreign-metadata",
};

/// What the tools print besides: banners, progress, states, and the backspaces between updates.
constexpr QStringView chatterPatterns[] = {
    u"\\x{08}+",
    // flac
    u"flac \\d\\S*\\s*Copyright[\\s\\S]*?Type `flac' for details\\.",
    u"(testing, )?\\d+(\\.\\d+)?% complete(, ratio=\\d+\\.\\d{3})?",
    u"(init_status|init status|state) = FLAC__[A-Z_]*[A-Z](?![a-z])",
    u"[^\\n]*WARNING: skipping unknown chunk[^)]*\\)",
    // wavpack and wvunpack
    u"W(V|AV)(UN)?PACK [^\\n]*\\s*Copyright[^\\n]*",
    u"(creating|restoring) [^\\n\\r]*?,(?=\\s)",
    u"\\d+% done\\.\\.\\.",
    u"(created|restored) [^\\n\\r]* in [\\d.]+ secs \\([^)]*\\)",
    // ttaenc and mac
    u"Percent Progress: \\d+",
    u"(Compressing \\([a-z ]+\\)|Decompressing)\\.\\.\\.",
    u"Progress: [\\d.]+% \\([^)]*\\)",
    // shntool
    u"Converting( \\[[^\\n]*?\\] (\\([\\d:.]+\\) (--> (\\[[^\\n]*?\\] ?:?)?)?)?)?",
    u"(Scanning|Trimming|Joining|Splitting|Stripping|Post-padding) \\[[^\\n]*: 100% OK\\n",
    u"shntool \\[split\\]: warning: (discarding initial|file \\d+ will)[^\\n]*",
    // lame
    u"LAME \\d[\\s\\S]*?(qval=\\d+|\\(q=[\\d.]+\\))",
    u"[^\\n]*\\x{1B}\\[[AK]",
    u"\\r +Frame [^\\n]*",
    u"\\s*\\d+/ *\\d* +\\( *\\d+%\\)\\|[^\\n]*",
    // opusenc and opusdec, with the tags that they list
    u"opusenc\\n--[\\s\\S]*?Preskip: \\d+",
    u"Decoding to \\d+ Hz[^\\n]*(\\n[^\\n]*=[^\\n]*|\\nEncoded with[^\\n]*)*",
    u"\\r *\\[[-\\\\|/]\\] [^\\r\\n]*",
    u"\\rDecoding complete\\. *",
};

/// The results hold the tools' pieces one behind the other: what matches stands for line breaks that are
/// gone.
const QRegularExpression &chatter()
{
    static const QRegularExpression expression = [] {
        QStringList patterns;
        for (const QStringView pattern : chatterPatterns) {
            patterns.append(pattern.toString());
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

} // namespace

QString essence(const QString &toolText)
{
    constexpr qsizetype mostLines = 6;
    const QString plain = QString(toolText).replace(chatter(), QStringLiteral("\n"));
    QStringList kept;
    for (const QStringView line : QStringView(plain).split(u'\n')) {
        const QStringView words = line.trimmed();
        if (!isNoise(words) && !kept.contains(words) && kept.size() < mostLines) {
            kept.append(words.toString());
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
