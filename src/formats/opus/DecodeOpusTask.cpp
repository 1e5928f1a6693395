// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/opus/DecodeOpusTask.h"

#include "formats/StatedFormat.h"
#include "tasks/ToolOutput.h"

namespace kruv {

namespace {

ToolPiece read(QStringView piece, QStringView)
{
    ToolPiece result;
    result.results = ToolOutput::withoutBackspaces(piece).toString();
    return result;
}

} // namespace

void DecodeOpusTask::makeOutput()
{
    showStatus(tr("Decoding From Opus"));
    publish(&KruvTask::startIndeterminateProgressBar); // the tool knows the time, but not the length
    if (!makesAiff()) {
        decodeTo(staged());
        return;
    }
    const QString wav = scratchWav();
    decodeTo(wav);
    convert(wav, staged(), FormatType::LinearPcm, FileType::Aiff);
}

void DecodeOpusTask::decodeTo(const QString &wav)
{
    if (!run("opusdec", {fileName(), wav}, read, {})) {
        return;
    }
    // The tool's status is that of success also where the source is damaged or the disk is full.
    constexpr double tolerance = 0.25; // seconds
    const double sourceTime = sourceAudio().time();
    const double wavTime = statedFormat(wav).time();
    if (wavTime + tolerance < sourceTime) {
        const bool diskIsFull = toolWords().contains(u"Cannot seek on wav file output");
        const QString reason =
            diskIsFull ? tr("Only %1 s of %2 s were written: the disk is full. Free some space on the output "
                            "folder's disk and try again.")
                       : tr("Only %1 s of %2 s were written: the source is damaged or was not copied whole.");
        fail(reason.arg(QString::number(wavTime, 'f', 2), QString::number(sourceTime, 'f', 2)));
    }
}

} // namespace kruv
