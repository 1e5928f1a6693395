// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/EncodeFlacTask.h"

#include "audio/AudioFiles.h"
#include "audio/CoreAudioHelper.h"
#include "audio/ExtAudioFileReader.h"
#include "audio/SourceCheck.h"
#include "base/PathNames.h"
#include "formats/Records.h"
#include "formats/ShntoolConversion.h"
#include "formats/flac/FlacOptions.h"
#include "formats/flac/FlacOutput.h"
#include "formats/flac/FlacTool.h"
#include "formats/flac/ForeignMetadata.h"

#include <stdexcept>

namespace kruv {

EncodeFlacTask::EncodeFlacTask(TaskCompletionSink *queue, const ConversionRequest &request)
    : TranscodeTask(queue, request, flacFormat)
{
}

bool EncodeFlacTask::readsItself() const
{
    return &sourceFormat() == &flacFormat || TranscodeTask::readsItself() || isAiffForFlac();
}

/// The tool reads one or two channels of AIFF, and of AIFF-C only what is plain PCM in its order.
bool EncodeFlacTask::isAiffForFlac() const
{
    constexpr int mostChannels = 2;
    return &sourceFormat() == &aiffFormat && !CoreAudioHelper::isAIFC(fileName()) &&
           sourceAudio().channels <= mostChannels && SourceCheck::tellsLength(fileName());
}

void EncodeFlacTask::makeOutput()
{
    requireForeignMetadata();
    if (readsItself()) {
        run(FlacTool::encode, {.input = sourceForTools(), .output = staged(), .options = chosen()});
        requireSameDigest();
    } else if (&sourceFormat() == &shortenFormat || &sourceFormat() == &monkeysAudioFormat) {
        encodeThroughShntool();
    } else {
        TranscodeTask::makeOutput();
    }
}

void EncodeFlacTask::requireForeignMetadata() const
{
    if (chosen().isOn(FlacOptions::keepForeignMetadata) && !readsItself()) {
        throw std::runtime_error(tr("Foreign metadata can be kept of WAV and AIFF files that flac reads by "
                                    "itself; %1 is none. Encode it "
                                    "without that option.")
                                     .arg(fileName())
                                     .toStdString());
    }
}

void EncodeFlacTask::encode(const QString &input)
{
    run(FlacTool::encodeTemporary, {.input = input, .output = staged(), .options = chosen()});
}

void EncodeFlacTask::encodeThroughShntool()
{
    const QString progress = tr("Encoding %1 to Flac: %2").arg(sourceFormat().label, QStringLiteral("%1%"));
    const auto request =
        FlacTool::encodeRequest({.input = fileName(), .output = staged(), .options = chosen()});
    runShntool(FlacCommandLine::encodeByShntool(request, PathNames::folderOf(staged())),
               ShntoolConversion::readWords, progress);
}

void EncodeFlacTask::run(const ToolStep &step, const ToolRequest &request)
{
    runStep(step, request);
    if (mayGoOn() && FlacOutput::reportsShortSource(toolWords())) {
        fail(tr("%1 ends before the audio that it announces.").arg(fileName()));
    }
}

ProofNote EncodeFlacTask::prove(const StagedOutputs &outputs)
{
    if (chosen().isOn(FlacOptions::keepForeignMetadata)) {
        ForeignMetadata::requireAllOf(fileName(), staged());
    }
    return TranscodeTask::prove(outputs);
}

/// The encoder does not check what its FLAC sources state.
void EncodeFlacTask::requireSameDigest()
{
    if (!mayGoOn() || &sourceFormat() != &flacFormat) {
        return;
    }
    const QByteArray stated = AudioFiles::open(fileName())->statedDigest();
    if (!stated.isEmpty() && AudioFiles::open(staged())->statedDigest() != stated) {
        fail(tr("%1 is damaged: its audio does not match the checksum that it holds.").arg(fileName()));
    }
}

void EncodeFlacTask::copyTags()
{
    if (&sourceFormat() == &flacFormat) {
        return; // the tool takes everything over
    }
    if (&sourceFormat() == &aiffFormat) {
        showStatus(tr("Reading AIFF Tags"));
    }
    TranscodeTask::copyTags();
}

} // namespace kruv
