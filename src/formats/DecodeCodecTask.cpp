// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/DecodeCodecTask.h"

#include "formats/Format.h"

namespace kruv {

DecodeCodecTask::DecodeCodecTask(TaskCompletionSink *queue, const ConversionRequest &request,
                                 const DecodeRecipe &recipe)
    : ConversionTask(queue, request)
    , m_recipe(recipe)
{
}

void DecodeCodecTask::makeOutput()
{
    showStatus(tr(m_recipe.firstStatus));
    if (!makesAiff()) {
        runStep(m_recipe.decoder, {.input = fileName(), .output = staged()});
        return;
    }
    const QString wav = scratchWav();
    ToolStep decoder = m_recipe.decoder;
    decoder.arguments = m_recipe.argumentsForAiff;
    if (runStep(decoder, {.input = fileName(), .output = wav})) {
        convert(wav, staged(), FormatType::LinearPcm, FileType::Aiff);
    }
}

void DecodeCodecTask::dress(StagedOutputs &)
{
    copyTagsIntoAiff(tr("Copying %1 Tags").arg(sourceFormat().label));
}

} // namespace kruv
