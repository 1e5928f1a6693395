// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ConversionTab.h"

#include "base/InParallel.h"
#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "base/Util.h"
#include "formats/Format.h"
#include "tabs/DoneBefore.h"
#include "tabs/Estimates.h"
#include "tabs/Plan.h"
#include "tasks/FileCommit.h"
#include "tasks/KruvTaskQueue.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace kruv {

namespace {

/// What an earlier run made is done, and no source, whether its own is still there or not.
void markDone(OutputPlan &plan, const DoneBefore &doneBefore)
{
    QSet<QString> outputs; // of other sources than themselves
    for (OutputPlan::Entry &entry : plan.entries()) {
        if (doneBefore.made(entry.source)) {
            entry.output = entry.source;
            entry.folder = PathNames::folderOf(entry.output);
            entry.isDone = true;
        } else {
            entry.isDone = doneBefore.made(entry.output, entry.source);
            outputs.insert(entry.output);
        }
    }
    std::erase_if(plan.entries(), [&outputs](const OutputPlan::Entry &entry) {
        return entry.source == entry.output && outputs.contains(entry.output);
    });
}

/// Of other outputs that are there nothing is recorded, or somebody changed them: a job looks at their audio.
/// That of lossy files can't be compared.
void proveOthers(OutputPlan &plan, const DoneBefore &doneBefore, const Format &target)
{
    for (OutputPlan::Entry &entry : plan.entries()) {
        if (!entry.isDone && !target.isLossy() && FileCommit::isTaken(entry.output) &&
            !doneBefore.isOfOtherOrder(entry.output)) {
            entry.earlier = ConversionRequest::Earlier::Kept;
        }
    }
}

/// File systems and tools cut times to whole seconds.
bool isNewer(const QString &output, const QString &source)
{
    const auto ofOutput = FileStamp::of(output);
    const auto ofSource = FileStamp::of(source);
    return ofOutput && ofSource && ofOutput->seconds >= ofSource->seconds;
}

/// What we made, and nobody touched since, is brought up to date. Other files that are there are left alone:
/// where they are newer than their sources, and else where they hold the same audio, which a job looks at.
void markCurrent(OutputPlan &plan, const DoneBefore &doneBefore, const Format &target)
{
    for (OutputPlan::Entry &entry : plan.entries()) {
        if (!FileCommit::isTaken(entry.output) || QFileInfo(entry.output).isDir()) {
            continue;
        }
        if (doneBefore.made(entry.output, entry.source)) {
            entry.isDone = true;
        } else if (doneBefore.made(entry.output)) {
            entry.earlier = ConversionRequest::Earlier::Renewed;
            entry.mayReplace = true;
            entry.replaced = FileStamp::of(entry.output);
        } else if (isNewer(entry.output, entry.source)) {
            entry.isDone = true;
            entry.doneReason = ConversionTab::tr("It is newer than its source.");
        } else if (!target.isLossy()) {
            entry.earlier = ConversionRequest::Earlier::Kept;
        }
    }
}

} // namespace

ConversionTab::ConversionTab(const QString &label, TabHost &host)
    : BaseTab(label, host)
{
    connect(&fileList(), &QAbstractItemModel::modelReset, &m_review, &Review::end);
    connect(&m_review, &Review::foundPlain, this, &ConversionTab::startReviewed);
}

void ConversionTab::tieKeepFolders(const QString &key, const ToggleControl &besideSources)
{
    m_keepFoldersButton.tieTo(host().preferences(), key);
    const auto follow = [this, &besideSources] { m_keepFoldersButton.setEnabled(!besideSources.isOn()); };
    connect(&besideSources, &Control::changed, this, follow);
    follow();
}

void ConversionTab::executeCommand()
{
    if (m_reviewsCommands) {
        return beginReview(false);
    }
    const auto command = this->command();
    if (!command || fileList().isEmpty() || isSettling() || !mayMakeLossless(command->order) ||
        !confirmDeletion(command->deletes.isOn())) {
        return;
    }
    if (const auto plan = planOutputs(command->besideSources, command->order)) {
        queueWhenSettled(*plan, command->order, command->deletes);
    }
}

void ConversionTab::beginReview(bool isWanted)
{
    const auto command = this->command();
    if (!command || fileList().isEmpty() || m_review.isUnderWay()) {
        return;
    }
    const auto place = choosePlaceUnless(command->besideSources);
    if (!place) {
        return;
    }
    ConversionOrder order = command->order;
    order.deletes = command->deletes.isOn();
    order.proves = host().taskQueue().provesOutputs();
    m_review.begin({.order = order,
                    .files = fileNames(),
                    .place = *place,
                    .asksBeforeDeleting = host().preferences().boolean(QStringLiteral("warnOnDelete")),
                    .freesOriginals = !Util::deletesToTrash(host().preferences()),
                    .addLists = [this](OutputPlan &plan) { addLists(plan); }},
                   isWanted);
}

void ConversionTab::startReviewed()
{
    if (!m_review.isUnderWay() || !m_review.mayStart()) {
        return;
    }
    const OutputPlan plan = m_review.outputs();
    const ConversionOrder order = m_review.order();
    m_review.end();
    queueJobs(plan, order);
}

void ConversionTab::changeFolderOfReview()
{
    const auto folder = chooseOutputFolder();
    if (folder && m_review.isUnderWay()) {
        m_review.setFolder(*folder);
    }
}

bool ConversionTab::mayMakeLossless(const ConversionOrder &order)
{
    const QStringList files = fileNames();
    const std::vector<bool> found =
        order.lossyAmong(files, threadsForOneJob(host().taskQueue().maxThreads()), [] { return false; });
    QStringList lossy;
    for (qsizetype index = 0; index < files.size(); ++index) {
        if (found[static_cast<std::size_t>(index)]) {
            lossy.append(files[index]);
        }
    }
    return lossy.isEmpty() || host().userInterface().askAboutLossy(lossy);
}

bool ConversionTab::isFileClash(const QStringList &inputFiles, const QStringList &outputFiles)
{
    const QSet<QString> outputs(outputFiles.begin(), outputFiles.end());
    return std::ranges::any_of(inputFiles,
                               [&outputs](const QString &input) { return outputs.contains(input); });
}

std::optional<OutputPlace> ConversionTab::choosePlaceUnless(const ToggleControl &besideSources)
{
    const auto folder = besideSources.isOn() ? QString() : chooseOutputFolder();
    if (!folder) {
        return std::nullopt;
    }
    return OutputPlace{.folder = *folder,
                       .roots = m_keepFoldersButton.isOn() ? folders() : QStringList(),
                       .names = m_names,
                       .isPortable = m_hasPortableNames};
}

bool ConversionTab::goesAlong(const QString &file) const
{
    const auto kind = OtherFiles::kindOf(file);
    return kind && m_otherFiles.testFlag(*kind) && std::ranges::any_of(folders(), [&](const QString &folder) {
               return OtherFiles::isSeenBelow(folder, file);
           });
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
                                                     const ConversionOrder &order)
{
    const auto place = choosePlaceUnless(besideSources);
    if (!place) {
        return std::nullopt;
    }
    OutputPlan plan(fileNames(), *place, order.target->extension(),
                    threadsForOneJob(host().taskQueue().maxThreads()));
    if (m_otherFiles) {
        OtherFiles(*place, folders(), *order.target).addTo(plan, m_otherFiles);
    }
    if (host().userInterface().skipsDone()) {
        const DoneBefore doneBefore(order);
        markDone(plan, doneBefore);
        if (host().userInterface().comparesOthers()) {
            proveOthers(plan, doneBefore, *order.target);
        }
    } else if (host().userInterface().updates()) {
        markCurrent(plan, DoneBefore(order), *order.target);
    }
    const bool goesOn = settleOutputs(plan);
    if (Plan *whole = host().plan()) {
        for (const PlanEntry &entry : plan.leftOut()) {
            whole->add(entry);
        }
    }
    return goesOn ? std::optional(plan) : std::nullopt;
}

bool ConversionTab::settleOutputs(OutputPlan &plan)
{
    const auto collision = plan.refuseCollisions();
    if (collision && !host().plan()) {
        host().userInterface().alert(tr("Two of the files would give the same output"), *collision,
                                     acknowledgeButton());
    }
    if (plan.entries().empty()) {
        return false;
    }
    tellOfMerges(plan);
    if (!plan.folders().isEmpty()) {
        addLists(plan);
    }
    return agreeOnExistingOutputs(plan);
}

/// In one chosen folder that is what was asked for.
void ConversionTab::tellOfMerges(const OutputPlan &plan)
{
    for (const QString &sentence : makesFolders() ? plan.merges() : QStringList()) {
        if (Plan *whole = host().plan()) {
            whole->warn(sentence);
        } else {
            host().userInterface().remark(sentence);
        }
    }
}

bool ConversionTab::agreeOnExistingOutputs(OutputPlan &plan)
{
    UserInterface &person = host().userInterface();
    const auto outputs = static_cast<qsizetype>(plan.entries().size());
    const auto isDone = &OutputPlan::Entry::isDone;
    if ((person.skipsDone() || person.updates()) && std::ranges::all_of(plan.entries(), isDone)) {
        person.allOutputsExist(fileList().count());
        return true;
    }
    if (const QStringList existing = plan.existing(); !existing.isEmpty()) {
        const auto choice = person.askAboutExisting(existing, outputs);
        if (!choice) {
            return false;
        }
        plan.settleExisting(*choice);
        if (plan.entries().empty()) {
            person.allOutputsExist(outputs);
        }
    }
    return true;
}

void ConversionTab::queueWhenSettled(const OutputPlan &plan, const ConversionOrder &order,
                                     const ToggleControl &deletes)
{
    if (!deletes.isOn()) {
        queueJobs(plan, order);
        return;
    }
    QStringList sources;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        if (!entry.isDone && !entry.isCopy) {
            sources.append(entry.source);
        }
    }
    m_lossQuestion.settle(LossQuestion::runOf(order, sources), worksInBackground(),
                          [this, plan, order](const LossQuestion::Answer &answer) {
                              OutputPlan settled = plan;
                              for (OutputPlan::Entry &entry : settled.entries()) {
                                  entry.keepReason = answer.kept.value(entry.source);
                              }
                              ConversionOrder deleting = order;
                              deleting.deletes = true;
                              deleting.mayDeleteChanged = answer.mayDeleteChanged;
                              queueJobs(settled, deleting);
                          });
}

void ConversionTab::queueJobs(const OutputPlan &plan, const ConversionOrder &order)
{
    ConversionOrder complete = order;
    complete.proves = host().taskQueue().provesOutputs();
    complete.makesFolders = makesFolders();
    if (!host().plan() && !m_reviewsCommands && !hasRoom(plan, complete)) {
        return;
    }
    const ConversionOrder::Jobs made = complete.makeJobs(plan, &host().taskQueue());
    reportWithoutJob(made.withoutJob, order.target->label.toString());
    submit(made.jobs, complete.toText(plan));
    if (Plan *whole = host().plan()) {
        completePlan(*whole, made.listsFollow ? plan.lists() : std::vector<OutputPlan::List>(), complete);
    }
    clearFiles();
}

void ConversionTab::completePlan(Plan &whole, const std::vector<OutputPlan::List> &lists,
                                 const ConversionOrder &order)
{
    for (const OutputPlan::List &list : lists) {
        PlanEntry entry{.output = list.path,
                        .action = FileCommit::isTaken(list.path) ? PlanEntry::Action::Replace
                                                                 : PlanEntry::Action::Make};
        if (!list.madeAnewOf.isEmpty()) {
            entry.sources = {list.madeAnewOf};
            entry.notes = {tr("The list is made anew over the new files.")};
        }
        whole.add(entry);
    }
    Estimates(order).applyTo(whole, host().taskQueue().maxThreads());
    for (const QString &sentence : whole.shortages(!Util::deletesToTrash(host().preferences()))) {
        whole.warn(sentence);
        whole.setShortOfSpace();
    }
}

bool ConversionTab::hasRoom(const OutputPlan &plan, const ConversionOrder &order)
{
    const QStringList shortages =
        Estimates(order).shortages(plan, order, !Util::deletesToTrash(host().preferences()));
    return shortages.isEmpty() || host().userInterface().askAboutSpace(shortages);
}

} // namespace kruv
