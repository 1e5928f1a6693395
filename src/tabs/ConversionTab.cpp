// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ConversionTab.h"

#include "base/UserInterface.h"
#include "formats/ConversionTask.h"
#include "tasks/KruvTaskQueue.h"

#include <QSet>

#include <algorithm>

namespace kruv {

bool ConversionTab::isFileClash(const QStringList &inputFiles, const QStringList &outputFiles)
{
    const QSet<QString> outputs(outputFiles.begin(), outputFiles.end());
    return std::ranges::any_of(inputFiles,
                               [&outputs](const QString &input) { return outputs.contains(input); });
}

std::optional<QString> ConversionTab::chooseOutputFolderUnless(const ToggleControl &besideSources)
{
    return besideSources.isOn() ? QString() : chooseOutputFolder();
}

bool ConversionTab::outputsCollide(const OutputPlan &plan)
{
    const auto collision = plan.collision();
    if (collision) {
        host().userInterface().alert(tr("Two of the files would give the same output"), *collision,
                                     acknowledgeButton());
    }
    return collision.has_value();
}

std::optional<OutputPlan> ConversionTab::planOutputs(const ToggleControl &besideSources,
                                                     const QString &extension)
{
    const auto folder = chooseOutputFolderUnless(besideSources);
    if (!folder) {
        return std::nullopt;
    }
    OutputPlan plan(fileNames(), *folder, extension);
    if (outputsCollide(plan)) {
        return std::nullopt;
    }
    addLists(plan);
    if (const QStringList existing = plan.existing(); !existing.isEmpty()) {
        const qsizetype outputs = plan.outputs().size();
        const auto choice = host().userInterface().askAboutExisting(existing, outputs);
        if (!choice) {
            return std::nullopt;
        }
        plan.settleExisting(*choice);
        if (plan.entries().empty()) {
            host().userInterface().allOutputsExist(outputs);
        }
    }
    return plan;
}

void ConversionTab::queueWhenSettled(const OutputPlan &plan, const Format &target,
                                     const OptionValues &options, const ToggleControl &deletes,
                                     const std::function<void(const Originals &originals)> &queueJobs)
{
    const auto finish = [this, queueJobs](const Originals &originals) {
        queueJobs(originals);
        clearFiles();
    };
    if (!deletes.isOn()) {
        finish({});
        return;
    }
    QStringList sources;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        sources.append(entry.source);
    }
    using Kept = TagLosses::KeptChunks;
    const bool keepsAll = target.chunksOption && options.isOn(*target.chunksOption);
    const Kept chunks = keepsAll ? Kept::All : target.keepsWavChunks ? Kept::OfWav : Kept::None;
    m_lossQuestion.settle(
        {.files = sources, .target = &target, .label = target.label.toString(), .chunks = chunks},
        worksInBackground(),
        [finish](const LossQuestion::Answer &answer) { finish({.deletes = true, .answer = answer}); });
}

std::shared_ptr<KruvTask> ConversionTab::makeJob(Format::JobMaker maker, const OutputPlan::Entry &entry,
                                                 const OptionValues &options, const Originals &originals)
{
    const std::shared_ptr<ConversionTask> job =
        maker(&host().taskQueue(), {.source = entry.source,
                                    .output = entry.output,
                                    .options = options,
                                    .mayReplace = entry.mayReplace,
                                    .mayDeleteChanged = originals.answer.mayDeleteChanged});
    job->setDeleteOriginal(originals.deletes);
    const QString reason = originals.answer.kept.value(entry.source);
    if (!reason.isEmpty()) {
        job->failAfterwards(reason);
    }
    return job;
}

} // namespace kruv
