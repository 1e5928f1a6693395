// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/BaseTab.h"
#include "tabs/Controls.h"
#include "tabs/ConversionOrder.h"
#include "tabs/LossQuestion.h"
#include "tabs/OtherFiles.h"
#include "tabs/OutputPlan.h"

#include <memory>
#include <utility>
#include <vector>

namespace kruv {

/// What the tabs share that turn each listed file into one output: where the outputs go, and which files are
/// in their way.
class ConversionTab : public BaseTab
{
    Q_OBJECT
public:
    using BaseTab::BaseTab;

    /// Whether outputs in a chosen folder keep the tree below the folders that were handed in.
    ToggleControl &keepFoldersButton() { return m_keepFoldersButton; }

    /// How outputs are called; null: as their sources.
    void setNames(std::shared_ptr<const NamePattern> names) { m_names = std::move(names); }
    /// Whether the names of outputs are such that other systems take them, too.
    void setPortableNames(bool portable) { m_hasPortableNames = portable; }

    /// Which files beside the audio go along.
    void setOtherFiles(OtherFiles::Kinds kinds) { m_otherFiles = kinds; }

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
    std::optional<OutputPlan> planOutputs(const ToggleControl &besideSources, const ConversionOrder &order);

    bool goesAlong(const QString &file) const override;
    /// Adds to a plan what is written about its outputs; nothing where no option asks for it.
    virtual void addLists(OutputPlan & /*plan*/) {}

    /// Queues the jobs of a plan once it is settled which originals go that hold more than the new files
    /// will, where `deletes` says that they go, and empties the list.
    void queueWhenSettled(const OutputPlan &plan, const ConversionOrder &order, const ToggleControl &deletes);
    bool isSettling() const { return m_lossQuestion.isOpen(); }
    LossQuestion &lossQuestion() { return m_lossQuestion; }

private:
    /// Leaves out what must not be made, and says so. False where nothing is left to be done, or the person
    /// does not go on.
    bool settleOutputs(OutputPlan &plan);
    void tellOfMerges(const OutputPlan &plan);
    bool agreeOnExistingOutputs(OutputPlan &plan);
    /// What a plan says besides its jobs: lists, costs, disks that are too small.
    void completePlan(Plan &whole, const std::vector<OutputPlan::List> &lists, const ConversionOrder &order);
    /// False where a disk is too small, and the person does not go on.
    bool hasRoom(const OutputPlan &plan, const ConversionOrder &order);
    void queueJobs(const OutputPlan &plan, const ConversionOrder &order);

    /// Whether outputs may lie in folders that are not there yet.
    bool makesFolders() const { return m_keepFoldersButton.isOn() || m_names; }

    ToggleControl m_keepFoldersButton;
    std::shared_ptr<const NamePattern> m_names;
    bool m_hasPortableNames = false;
    OtherFiles::Kinds m_otherFiles;
    LossQuestion m_lossQuestion{host()};
};

} // namespace kruv
