// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/BaseTab.h"
#include "tabs/Controls.h"
#include "tabs/ConversionOrder.h"
#include "tabs/LossQuestion.h"
#include "tabs/OtherFiles.h"
#include "tabs/OutputPlan.h"
#include "tabs/Review.h"

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
    ConversionTab(const QString &label, TabHost &host);

    /// Whether outputs in a chosen folder keep the tree below the folders that were handed in. Disabled where
    /// they go beside their sources.
    ToggleControl &keepFoldersButton() { return m_keepFoldersButton; }

    /// How outputs are called; null: as their sources.
    void setNames(std::shared_ptr<const NamePattern> names) { m_names = std::move(names); }
    /// Whether the names of outputs are such that other systems take them, too.
    void setPortableNames(bool portable) { m_hasPortableNames = portable; }

    /// Which files beside the audio go along.
    void setOtherFiles(OtherFiles::Kinds kinds) { m_otherFiles = kinds; }

    /// True when any of `inputFiles` is among `outputFiles`.
    static bool isFileClash(const QStringList &inputFiles, const QStringList &outputFiles);

    /// What is not plain is shown as a plan, and not asked about. For whoever shows review().
    void setReviewsCommands(bool reviews) { m_reviewsCommands = reviews; }
    /// The tab's command while it is being looked at.
    Review &review() { return m_review; }
    /// Shows what the command would do, whatever it is.
    void showPlan() { beginReview(true); }
    /// Does what the plan says that is shown.
    void startReviewed();
    /// Asks for another folder for what is shown.
    void changeFolderOfReview();

    void executeCommand() override;

protected:
    /// What the tab's options ask for.
    struct Command
    {
        ConversionOrder order;
        const ToggleControl &besideSources;
        const ToggleControl &deletes;
    };
    /// Nothing where they ask for nothing that can be done, or where the tab's command is no conversion.
    virtual std::optional<Command> command() { return std::nullopt; }

    /// Loads what keepFoldersButton() was, and keeps it in mind.
    void tieKeepFolders(const QString &key, const ToggleControl &besideSources);
    /// True, and told, where two sources would give one output.
    bool outputsCollide(const OutputPlan &plan);

    bool goesAlong(const QString &file) const override;
    /// Adds to a plan what is written about its outputs; nothing where no option asks for it.
    virtual void addLists(OutputPlan & /*plan*/) {}

    bool isSettling() const { return m_lossQuestion.isOpen(); }
    LossQuestion &lossQuestion() { return m_lossQuestion; }

private:
    void beginReview(bool isWanted);
    /// The folder that the person chose, or an empty text where outputs go beside their sources; nothing when
    /// the person cancelled.
    std::optional<OutputPlace> choosePlaceUnless(const ToggleControl &besideSources);
    /// Asks about lossy files in the list. True when the command may go on.
    bool mayMakeLossless(const ConversionOrder &order);
    /// Where the outputs of the listed files go: asks for a folder, and about those whose names are taken.
    /// Nothing when the command is not to go on.
    std::optional<OutputPlan> planOutputs(const ToggleControl &besideSources, const ConversionOrder &order);
    /// Leaves out what must not be made, and says so. False where nothing is left to be done, or the person
    /// does not go on.
    bool settleOutputs(OutputPlan &plan);
    void tellOfMerges(const OutputPlan &plan);
    bool agreeOnExistingOutputs(OutputPlan &plan);
    /// Queues the jobs of a plan once it is settled which originals go that hold more than the new files
    /// will, where `deletes` says that they go, and empties the list.
    void queueWhenSettled(const OutputPlan &plan, const ConversionOrder &order, const ToggleControl &deletes);
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
    Review m_review{host()};
    bool m_reviewsCommands = false;
};

} // namespace kruv
