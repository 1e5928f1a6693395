// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/EncodeHEAACTask.h"

#include "convert/LossyWavSources.h"
#include "formats/LossyOutput.h"
#include "tasks/ToolOutput.h"

namespace kruv {

namespace {

const TranscodeTask::Recipe recipe{
    .firstStatus = "Encoding to HE-AAC",
    .wavSources = LossyWavSources::heAac,
    .extension = "m4a",
    .encoder = {},
    .taggedSources = {},
    .readsOtherSources = true,
};

} // namespace

EncodeHEAACTask::EncodeHEAACTask(TaskCompletionSink *queue, const QString &fileName, const QString &,
                                 const QString &outputPath, std::int32_t level, bool overwrite)
    : EncodeM4ATask(queue, fileName, outputPath, recipe, level, overwrite)
{
}

void EncodeHEAACTask::encode(const QString &input)
{
    showStatus(QStringLiteral("Encoding To HE-AAC"));
    runEncoder("aacplusenc", {input, writtenFile(), QString::number(level())},
               [this](const QString &piece) { processTaskOutput(piece); });
}

void EncodeHEAACTask::processTaskOutput(const QString &piece)
{
    if (const auto percentage = LossyOutput::aacplusenc(piece)) {
        setTopTextFieldString(QStringLiteral("Encoding to HE-AAC: %1%").arg(*percentage, 0, 'f', 6));
        setProgressIndicatorValue(*percentage);
        publish(&KruvTask::updateStatus);
    } else {
        appendResults(u'\n' + ToolOutput::withoutBackspaces(piece).toString());
    }
}

} // namespace kruv
