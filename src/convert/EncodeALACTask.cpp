// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/EncodeALACTask.h"

#include "convert/TranscodeRecipes.h"
#include "tags/AACTagsHelper.h"

#include <exception>

namespace kruv {

EncodeALACTask::EncodeALACTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath)
    : TranscodeTask(queue, fileName, outputPath, TranscodeRecipes::toAppleLossless, {})
{
}

void EncodeALACTask::doStartTask()
{
    try {
        TranscodeTask::doStartTask();
    } catch (const std::exception &failure) {
        fail(QStringLiteral("Error converting file %1 to Apple Lossless:\n%2")
                 .arg(fileName(), QString::fromUtf8(failure.what())));
    }
}

void EncodeALACTask::encode(const QString &input)
{
    convert(input, outFile(), FormatType::AppleLossless, FileType::M4af);
}

void EncodeALACTask::finish()
{
    TranscodeTask::finish();
    showStatus(QStringLiteral("Making Gapless"));
    AACTagsHelper().makeGapless(outFile());
}

} // namespace kruv
