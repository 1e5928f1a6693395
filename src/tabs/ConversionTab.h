// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/Format.h"
#include "formats/OptionValues.h"
#include "tabs/BaseTab.h"
#include "tabs/Controls.h"
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

    /// Which originals go.
    struct Deletion
    {
        bool originals = false;
        bool changed = false; ///< also those whose outputs have other samples on purpose
    };
    /// Where originals are to be deleted, asks about those that can't be got back from files of `target`.
    Deletion agreeOnDeletion(bool deletesOriginals, const Format &target);

    /// The job that makes one output of a plan by a format's `maker`, not queued yet.
    std::shared_ptr<KruvTask> makeJob(Format::JobMaker maker, const OutputPlan::Entry &entry,
                                      const OptionValues &options, Deletion deletion);
};

} // namespace kruv
