// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/DecodeOpusTask.h"

#include "formats/StatedFormat.h"
#include "platform/Resources.h"
#include "tasks/TemporaryFile.h"
#include "tasks/ToolOutput.h"

#include <QFile>

namespace kruv {

DecodeOpusTask::DecodeOpusTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                               const QString &format)
    : CodecTask(queue, fileName, outputPath, format.toLower())
    , m_toAiff(format == u"AIFF")
{
}

void DecodeOpusTask::doStartTask()
{
    if (QFile::exists(outFile())) {
        fail(QStringLiteral("The output file %1 already exists.\n").arg(outFile()));
        return;
    }
    watchOutput();
    showStatus(QStringLiteral("Decoding From Opus"));
    publish(&KruvTask::startIndeterminateProgressBar); // the tool knows the time, but not the length
    if (m_toAiff) {
        const TemporaryFile wav(folder(), QStringLiteral("wav"));
        decodeTo(wav.path());
        convertToAiff(wav.path());
    } else {
        decodeTo(outFile());
        if (!mayGoOn()) {
            QFile::remove(outFile());
        }
    }
    deleteSource(output());
}

void DecodeOpusTask::decodeTo(const QString &wav)
{
    bool diskIsFull = false;
    const bool decoded =
        runTool(toolPath(QStringLiteral("opusdec")), {fileName(), wav}, [&](const QString &piece) {
            appendResults(ToolOutput::withoutBackspaces(piece).toString());
            diskIsFull = diskIsFull || piece.contains(u"Cannot seek on wav file output");
        });
    // The tool's status is that of success also where the source is damaged or the disk is full.
    constexpr double tolerance = 0.25; // seconds
    const double sourceTime = statedFormat(fileName()).time();
    const double wavTime = decoded ? statedFormat(wav).time() : 0.0;
    if (decoded && wavTime + tolerance < sourceTime) {
        fail(QStringLiteral("\nOnly %1 s of %2 s were written: %3.\n")
                 .arg(wavTime, 0, 'f', 2)
                 .arg(sourceTime, 0, 'f', 2)
                 .arg(diskIsFull ? QStringLiteral("the disk is full")
                                 : QStringLiteral("the source is damaged")));
    }
}

void DecodeOpusTask::convertToAiff(const QString &wav)
{
    convert(wav, outFile(), FormatType::LinearPcm, FileType::Aiff);
}

} // namespace kruv
