// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/opus/EncodeOpusTask.h"

#include "formats/Records.h"
#include "formats/TagCopy.h"
#include "formats/opus/OpusTool.h"
#include "tags/TagsObject.h"

namespace kruv {

EncodeOpusTask::EncodeOpusTask(TaskCompletionSink *queue, const ConversionRequest &request)
    : LossyTask(queue, request, opusFormat)
{
}

void EncodeOpusTask::encode(const QString &input)
{
    if (const SourceRule *special = rule(); special && special->tagStatus) {
        showStatus(ConversionTask::tr(special->tagStatus));
    }
    const auto tags = TagCopy::read(sourceFormat(), fileName());
    showStatus(tr("Encoding To Opus"));
    const QStringList arguments = OpusTool::encode({.input = input, .output = staged(), .options = chosen()},
                                                   tags->titleText(), tags->artistText());
    appendResults(QStringLiteral("opusenc\n") + arguments.join(u'\n') + u'\n');
    run("opusenc", arguments, OpusTool::read, tr("Encoding To Opus"));
}

} // namespace kruv
