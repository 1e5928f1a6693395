// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/Format.h"
#include "formats/OptionValues.h"
#include "tabs/BaseTab.h"
#include "tabs/Controls.h"
#include "tabs/LossQuestion.h"
#include "tabs/OutputPlan.h"

#include <memory>

namespace kruv {

class KruvTask;

/// What the tabs share that turn each listed file into one output: where the outputs go, and which files are
/// in their way.
class ConversionTab : public BaseTab
{
    Q_OBJECT
public:
    using BaseTab::BaseTab;

    /// True when any of `inputFiles` is among `outputFiles`.
    static bool isFileClash(const QStringList &inputFiles, const QStringList &outputFiles);

protected:
    /// The folder that the person chose, or an empty text where outputs go beside their sources; nothing when
    /// the person cancelled.
    std::optional<QString> chooseOutputFolderUnless(const ToggleControl &besideSources);
    /// True, and told, where two sources would give one output.
    bool outputsCollide(const OutputPlan &plan);
    /// Where the outputs of the listed files go: asks for a folder, and about those whose names are taken.
    /// Nothing when the command is not to go on.
    std::optional<OutputPlan> planOutputs(const ToggleControl &besideSources, const QString &extension);

    /// Adds to a plan what is written about its outputs; nothing where no option asks for it.
    virtual void addLists(OutputPlan & /*plan*/) {}

    /// What the jobs of one command are to do with their originals.
    struct Originals
    {
        bool deletes = false;
        LossQuestion::Answer answer = {};
    };
    /// Queues the jobs of a plan once it is settled which originals go that hold more than files of `target`
    /// will, and empties the list.
    void queueWhenSettled(const OutputPlan &plan, const Format &target, const OptionValues &options,
                          const ToggleControl &deletes,
                          const std::function<void(const Originals &originals)> &queueJobs);
    bool isSettling() const { return m_lossQuestion.isOpen(); }
    LossQuestion &lossQuestion() { return m_lossQuestion; }

    /// The job that makes one output of a plan by a format's `maker`, not queued yet.
    std::shared_ptr<KruvTask> makeJob(Format::JobMaker maker, const OutputPlan::Entry &entry,
                                      const OptionValues &options, const Originals &originals);

private:
    LossQuestion m_lossQuestion{host()};
};

} // namespace kruv
