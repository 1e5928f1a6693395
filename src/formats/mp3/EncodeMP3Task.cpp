// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/mp3/EncodeMP3Task.h"

#include "audio/CoreAudioHelper.h"
#include "base/Preferences.h"
#include "formats/Records.h"
#include "formats/ShntoolConversion.h"
#include "tasks/TaskCompletionSink.h"

namespace kruv {

EncodeMP3Task::EncodeMP3Task(TaskCompletionSink *queue, const ConversionRequest &request)
    : LossyTask(queue, request, mp3Format)
{
}

bool EncodeMP3Task::readsItself() const
{
    const bool isWideAiff = &sourceFormat() == &aiffFormat && CoreAudioHelper::is24BitAIFF(fileName());
    return LossyTask::readsItself() && !isWideAiff;
}

Mp3Tool::Tuning EncodeMP3Task::tuning() const
{
    const Preferences &preferences = queue()->preferences();
    return {.jointStereo = preferences.integer(QStringLiteral("lameStereoOption")) != 0,
            .qValue = preferences.integer(QStringLiteral("lameQValue"))};
}

void EncodeMP3Task::encode(const QString &input)
{
    const QString progress = tr("Encoding to MP3: %1%");
    const ToolRequest request{.input = input, .output = staged(), .options = chosen()};
    showStatus(tr("Encoding to LAME MP3"));
    if (&sourceFormat() == &wavFormat) {
        run("lame", Mp3Tool::encode(request, tuning()), Mp3Tool::read, progress);
    } else {
        run("shntool", Mp3Tool::encodeByShntool(request, tuning()), ShntoolConversion::read, progress);
    }
}

} // namespace kruv
