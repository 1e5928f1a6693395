// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ConversionTab.h"

#include "audio/Proof.h"
#include "base/UserInterface.h"
#include "formats/ConversionTask.h"
#include "formats/Formats.h"
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
        const auto choice = host().userInterface().askAboutExisting(existing, plan.outputs().size());
        if (!choice) {
            return std::nullopt;
        }
        plan.settleExisting(*choice);
    }
    return plan;
}

ConversionTab::Deletion ConversionTab::agreeOnDeletion(bool deletesOriginals, const Format &target)
{
    QStringList changed = deletesOriginals ? fileNames() : QStringList();
    changed.removeIf([&target](const QString &file) {
        const Format *source = target.isLossy() ? Formats::identify(file) : nullptr;
        return target.isLossy() ? !source || source->kind != FormatKind::ChangesSignal
                                : !Proof::changesSamples(file);
    });
    return {.originals = deletesOriginals,
            .changed = !changed.isEmpty() && host().userInterface().askAboutChanged(changed)};
}

std::shared_ptr<KruvTask> ConversionTab::makeJob(Format::JobMaker maker, const OutputPlan::Entry &entry,
                                                 const OptionValues &options, Deletion deletion)
{
    std::shared_ptr<KruvTask> job = maker(&host().taskQueue(), {.source = entry.source,
                                                                .output = entry.output,
                                                                .options = options,
                                                                .mayReplace = entry.mayReplace,
                                                                .mayDeleteChanged = deletion.changed});
    job->setDeleteOriginal(deletion.originals);
    return job;
}

} // namespace kruv
