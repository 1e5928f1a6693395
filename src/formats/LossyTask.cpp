// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/LossyTask.h"

#include "audio/CoreAudioHelper.h"
#include "formats/PlainWav.h"
#include "formats/Records.h"
#include "formats/StatedFormat.h"

#include <stdexcept>

namespace kruv {

void LossyTask::makeOutput()
{
    requireSoundSource();
    TranscodeTask::makeOutput();
}

/// Not every encoder knows RF64 and its kin.
bool LossyTask::readsItself() const
{
    return TranscodeTask::readsItself() && (&sourceFormat() != &wavFormat || isRiffWav(fileName()));
}

void LossyTask::requireSoundSource() const
{
    if (&sourceFormat() == &wavFormat && CoreAudioHelper::getFormatInfo(fileName()).sampleRate == 0) {
        throw std::runtime_error(tr("%1 is not a WAV file, or holds a kind of audio that can't be read.")
                                     .arg(fileName())
                                     .toStdString());
    }
}

void LossyTask::dress(StagedOutputs &outputs)
{
    TranscodeTask::dress(outputs);
    if (mayGoOn()) {
        requireWholeOutput();
    }
}

void LossyTask::requireWholeOutput()
{
    constexpr double tolerance = 0.25; // seconds; the formats' frames are shorter by far
    const double sourceTime = sourceAudio().time();
    const double outputTime = statedFormat(staged()).time();
    if (outputTime + tolerance < sourceTime) {
        fail(tr("The output was removed: it is shorter (%1 s) than its source says to be (%2 s).")
                 .arg(QString::number(outputTime, 'f', 2), QString::number(sourceTime, 'f', 2)));
    } else if (sourceTime == 0.0 && outputTime == 0.0 && deleteOriginal()) {
        failAfterwards(tr("nothing tells how long it and its output are"));
    }
}

} // namespace kruv
