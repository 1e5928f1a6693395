// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/CodecOutput.h"

#include "formats/flac/FlacOutput.h"
#include "tasks/ToolOutput.h"

namespace kruv::CodecOutput {

namespace {

constexpr QChar escape(0x1B);

void setPercentage(Piece &result, double percentage)
{
    result.percentage = percentage;
    result.percentageText = QString::number(percentage, 'f', 6);
}

/// The encoders end with status 0 where a file has less audio than its header states.
bool tellsOfShortInput(QStringView piece, QStringView words, QStringView name)
{
    return piece.contains(words) && !name.contains(words);
}

void readShntoolPercentage(Piece &result, QStringView text)
{
    if (const qsizetype percent = text.indexOf(u'%'); percent >= 0) {
        setPercentage(result, ToolOutput::leadingNumber(text.left(percent)));
    }
}

} // namespace

Piece wavpack(QStringView piece, QStringView name)
{
    const auto isDrawing = [](QChar character) { return character == u'\b' || character == escape; };
    while (!piece.isEmpty() && isDrawing(piece.front())) {
        piece = piece.sliced(1);
    }
    while (!piece.isEmpty() && isDrawing(piece.back())) {
        piece.chop(1);
    }
    Piece result;
    if (piece.contains(u"% done...")) {
        QStringView number = piece.left(piece.indexOf(u'%'));
        if (number.startsWith(u"]0;")) {
            number = number.sliced(3); // the title of the terminal's window
        }
        setPercentage(result, ToolOutput::leadingNumber(number));
    }
    // The slashes of the question can't be in a name.
    result.outputExists = piece.contains(u"overwrite") && piece.contains(u"(yes/no/all)?");
    result.failed = result.outputExists || tellsOfShortInput(piece, u"couldn't read all samples", name);
    result.results = piece.toString();
    return result;
}

Piece ttaenc(QStringView piece, QStringView name)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    constexpr QStringView marker = u"Percent Progress: ";
    Piece result;
    if (const qsizetype at = text.lastIndexOf(marker); at >= 0) {
        setPercentage(result, ToolOutput::leadingNumber(text.sliced(at + marker.size())));
    }
    result.failed = tellsOfShortInput(text, u"has less audio than its header states", name);
    result.results = text.toString().repeated(2);
    return result;
}

Piece mac(QStringView piece, QStringView name)
{
    constexpr QStringView progress = u"Progress: ";
    Piece result;
    // The newest update that is whole.
    const qsizetype end = piece.lastIndexOf(QStringLiteral(" seconds remaining, "));
    const qsizetype start = end < 0 ? -1 : piece.left(end).lastIndexOf(progress);
    if (start >= 0) {
        const QStringView update = piece.sliced(start + progress.size()).chopped(piece.size() - end);
        const qsizetype percent = update.indexOf(u'%');
        const qsizetype seconds = update.indexOf(u" (");
        if (percent >= 0 && seconds > percent) {
            result.percentageText = update.left(percent).toString();
            result.percentage = ToolOutput::leadingNumber(update.left(percent));
            result.detail = update.sliced(seconds + 2).toString();
        }
    }
    result.failed = piece.contains(u"Error: 10") || piece.contains(u"Error: 2000") ||
                    tellsOfShortInput(piece, u"the input ends before the audio", name);
    result.results = piece.toString();
    return result;
}

Piece flacEncode(QStringView piece, QStringView name)
{
    const QStringView text = ToolOutput::cleaned(piece);
    const auto progress = FlacOutput::encodeProgress(text, name);
    Piece result;
    if (!progress.percentageText.isEmpty()) {
        result.percentage = progress.percentage;
        result.percentageText = progress.percentageText;
        result.detail = progress.ratioText;
    }
    result.outputExists = text.contains(u"already exists, use -f");
    result.failed = FlacOutput::reportsShortSource(text);
    result.results = text.toString();
    return result;
}

Piece flacDecode(QStringView piece, QStringView name)
{
    const QStringView text = ToolOutput::cleaned(piece);
    Piece result;
    if (const auto percentage = FlacOutput::decodeProgress(text, name)) {
        setPercentage(result, *percentage);
    } else {
        result.results = text.toString();
    }
    return result;
}

Piece shntool(QStringView piece, QStringView)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    Piece result;
    if (text.contains(u"Converting")) {
        result.results += text.left(text.indexOf(u": "));
    }
    if (text.contains(u"ERROR") || text.contains(u"OK")) {
        result.results += text;
    }
    readShntoolPercentage(result, text);
    return result;
}

Piece shntoolRepeating(QStringView piece, QStringView name)
{
    Piece result = shntool(piece, name);
    result.results += ToolOutput::withoutBackspaces(piece);
    return result;
}

Piece shntoolWords(QStringView piece, QStringView name)
{
    Piece result = shntoolRepeating(piece, name);
    if (result.percentage) {
        result.percentageText = QString::number(*result.percentage);
    }
    return result;
}

Piece shntoolPlain(QStringView piece, QStringView)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    Piece result;
    readShntoolPercentage(result, text);
    result.results = text.toString();
    return result;
}

} // namespace kruv::CodecOutput
