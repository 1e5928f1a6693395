// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/TranscodeTask.h"

#include "formats/PlainWav.h"
#include "formats/Records.h"
#include "formats/TagCopy.h"

#include <QLoggingCategory>

#include <algorithm>
#include <exception>

namespace kruv {

namespace {
Q_LOGGING_CATEGORY(transcodeLog, "kruv.formats", QtWarningMsg)
}

TranscodeTask::TranscodeTask(TaskCompletionSink *queue, const ConversionRequest &request,
                             const Format &target)
    : ConversionTask(queue, request)
    , m_target(target)
{
}

const SourceRule *TranscodeTask::rule() const
{
    const auto found = std::ranges::find(m_target.recipe->rules, &sourceFormat(), &SourceRule::source);
    return found == m_target.recipe->rules.end() ? nullptr : &*found;
}

const ToolStep *TranscodeTask::toWav() const
{
    const SourceRule *special = rule();
    return special && special->toWav ? special->toWav : sourceFormat().toWav;
}

QStringList TranscodeTask::tools() const
{
    QStringList names;
    if (m_target.encoderTool) {
        names.append(QString::fromLatin1(m_target.encoderTool));
    }
    if (const ToolStep *step = readsItself() ? nullptr : toWav()) {
        names.append(QString::fromLatin1(step->tool));
    }
    return names;
}

bool TranscodeTask::readsItself() const
{
    const TranscodeRecipe &recipe = *m_target.recipe;
    if (&sourceFormat() == &wavFormat) {
        return isPlainWav(fileName());
    }
    return recipe.readsAnything ? !rule() : std::ranges::count(recipe.readsItself, &sourceFormat()) > 0;
}

void TranscodeTask::makeOutput()
{
    showStatus(ConversionTask::tr(m_target.recipe->firstStatus));
    if (readsItself()) {
        encode(sourceForTools());
        return;
    }
    const SourceRule *special = rule();
    if (!special) {
        showStatus(tr("Decoding %1 to Wav").arg(sourceFormat().label));
    } else if (special->status) {
        showStatus(ConversionTask::tr(special->status));
    }
    const QString wav = scratchWav();
    const ToolStep *step = toWav();
    ToolStep spelled = step ? *step : ToolStep();
    if (special && special->progress) {
        spelled.progress = special->progress;
    }
    if (makeWav(wav, step ? &spelled : nullptr)) {
        encode(wav);
    }
}

void TranscodeTask::encode(const QString &input)
{
    runStep(m_target.recipe->encoder, {.input = input, .output = staged(), .options = chosen()});
}

void TranscodeTask::dress(StagedOutputs &)
{
    copyTags();
}

void TranscodeTask::copyTags()
{
    if (!sourceFormat().tags || !m_target.tags) {
        return;
    }
    const SourceRule *special = rule();
    showStatus(special && special->tagStatus ? ConversionTask::tr(special->tagStatus)
                                             : tr("Copying %1 Tags").arg(sourceFormat().label));
    try {
        TagCopy::copy(sourceFormat(), fileName(), m_target, staged());
    } catch (const std::exception &failure) {
        tagsNotCopied(QString::fromUtf8(failure.what()));
    }
}

void TranscodeTask::tagsNotCopied(const QString &reason)
{
    qCInfo(transcodeLog, "Error writing tags for %s: %s", qUtf8Printable(outputPath()),
           qUtf8Printable(reason));
    appendResults(tr("Error writing tags to file %1:\n%2\n").arg(outputPath(), reason));
    if (FileStamp::isSameFile(fileName(), outputPath())) {
        fail(tr("%1 was kept: what should take its place has no tags.").arg(fileName()));
    }
    failAfterwards(tr("its tags could not be copied"));
}

} // namespace kruv
