// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/alac/EncodeALACTask.h"

#include "formats/Records.h"
#include "formats/TagCopy.h"
#include "tags/AACTagsHelper.h"
#include "tags/TagsObject.h"

#include <exception>

namespace kruv {

EncodeALACTask::EncodeALACTask(TaskCompletionSink *queue, const ConversionRequest &request)
    : TranscodeTask(queue, request, appleLosslessFormat)
{
}

void EncodeALACTask::makeOutput()
{
    try {
        TranscodeTask::makeOutput();
    } catch (const std::exception &failure) {
        fail(tr("Error converting file %1 to Apple Lossless:\n%2")
                 .arg(fileName(), QString::fromUtf8(failure.what())));
    }
}

void EncodeALACTask::encode(const QString &input)
{
    convert(input, staged(), FormatType::AppleLossless, FileType::M4af);
}

void EncodeALACTask::dress(StagedOutputs &outputs)
{
    if (sourceFormat().tags) {
        TranscodeTask::dress(outputs);
    } else {
        TagCopy::write(appleLosslessFormat, staged(), TagsObject()); // puts the index before the audio
    }
    showStatus(tr("Making Gapless"));
    AACTagsHelper().makeGapless(staged());
}

} // namespace kruv
