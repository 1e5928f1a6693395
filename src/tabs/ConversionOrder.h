// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/OptionValues.h"
#include "tabs/OutputPlan.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kruv {

class KruvTask;
class KruvTaskResults;
class TaskCompletionSink;
struct Format;

/// What the jobs of one conversion command have in common. With the plan's entries it is all that they are
/// made from, and it can be kept as text, so that a later process makes the same jobs.
struct ConversionOrder
{
    /// What is made.
    const Format *target = nullptr;
    /// To plain PCM, by the source's format; else by the target's.
    bool decodes = false;
    OptionValues options = {};
    bool deletes = false; ///< originals
    bool mayDeleteChanged = false;
    bool proves = false;
    bool makesFolders = false; ///< of outputs

    struct Jobs
    {
        /// In the plan's order.
        std::vector<std::shared_ptr<KruvTask>> jobs = {};
        /// Sources for which there is no job.
        QStringList withoutJob = {};
        /// The lists are written when these have ended.
        bool listsFollow = false;
    };
    /// The jobs of all entries that are not done yet, and of the lists. Nothing is queued.
    Jobs makeJobs(const OutputPlan &plan, TaskCompletionSink *queue) const;
    /// The job that writes the lists of a plan, each followed by the next; null where there are none.
    std::shared_ptr<KruvTask> makeLists(const OutputPlan &plan, TaskCompletionSink *queue) const;
    /// All of them.
    std::vector<std::shared_ptr<KruvTask>> listJobs(const OutputPlan &plan, TaskCompletionSink *queue) const;

    /// Of each file, whether it is lossy and would be made lossless. Reads the beginnings of the files, up to
    /// the first that `stopped` says is not wanted any more.
    std::vector<bool> lossyAmong(const QStringList &files, std::size_t threads,
                                 const std::function<bool()> &stopped) const;

    /// Whether this order makes of a source what the other one does.
    bool makesTheSame(const ConversionOrder &other) const;

    /// Whether the outputs of both are proven, or of neither: that takes time.
    bool provesLike(const ConversionOrder &other) const;

    /// As a text that later versions of the program read, with the plan's lists.
    QString toText(const OutputPlan &plan) const;
    struct Kept;
    /// Nothing for a text that this version can't carry out.
    static std::optional<Kept> fromText(const QString &text);

private:
    std::shared_ptr<KruvTask> makeJob(const OutputPlan::Entry &entry, TaskCompletionSink *queue) const;
    std::shared_ptr<KruvTask> listOfOption(const OutputPlan &plan, TaskCompletionSink *queue) const;
};

struct ConversionOrder::Kept
{
    ConversionOrder order = {};
    std::vector<OutputPlan::List> lists = {};
};

} // namespace kruv
