// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/ExistingFiles.h"
#include "tabs/ConversionOrder.h"
#include "tabs/OutputPlace.h"
#include "tabs/OutputPlan.h"
#include "tabs/PlanEntry.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace kruv {

class Estimates;
class TaskCompletionSink;

/// What a review finds out, piece by piece. Any thread, but where it says otherwise.
namespace ReviewSteps {

struct Command
{
    ConversionOrder order = {};
    QStringList files = {}; ///< each once
    OutputPlace place = {};
    /// That originals go is to be agreed to.
    bool asksBeforeDeleting = false;
    /// They leave room on their disks.
    bool freesOriginals = false;
    /// Adds what is written about the outputs. Main thread.
    std::function<void(OutputPlan &plan)> addLists = {};
};

/// What no answer changes.
struct Base
{
    /// What would collide is left out.
    OutputPlan plan{{}, {}};
    std::shared_ptr<const Estimates> estimates = nullptr;
    /// By file: it is lossy, and the target is not.
    std::vector<bool> lossy = {};
    /// The plan's entries in the order in which they are looked at: first one of each type in each folder,
    /// which tells of folders that can't be written to and of tools that are missing.
    std::vector<std::size_t> lookOrder = {};
    std::size_t firstLooks = 0; ///< how many those are
};
Base base(const Command &command, std::size_t threads, const std::stop_token &stop);

/// What follows from the answer about names that are taken.
struct Settled
{
    OutputPlan plan{{}, {}};
    /// By file, and then the lists.
    std::vector<PlanEntry> entries = {};
    QStringList warnings = {};
    qsizetype existing = 0; ///< before the answer
};
Settled settled(const Command &command, const Base &base, ExistingFiles choice);

/// By entry of a plan whose entries are of some of the files, in their order: which file that is.
std::vector<std::size_t> rowsOf(const OutputPlan &plan, const QStringList &files);

/// What one source says.
struct Look
{
    QString refusal = {};   ///< why its job would fail, a sentence
    QStringList notes = {}; ///< a sentence each
    qint64 bytes = 0;
    qint64 outputBytes = 0; ///< where its header tells
    // Where originals go:
    QString loss = {};      ///< what its output can't hold, a clause
    bool isChanged = false; ///< its output has other samples
};
/// Some of the base's entries, in the order of its looks, and the jobs that would be made of them.
struct Slice
{
    std::vector<OutputPlan::Entry> entries = {};
    ConversionOrder::Jobs jobs = {};
};
/// The next one, which begins at `from`. Main thread, and so its end.
Slice slice(const Command &command, const Base &base, std::size_t from, TaskCompletionSink *queue);
/// Looks at as many of its entries as a short time allows, first to last.
std::vector<Look> looks(const Command &command, const Slice &slice, const std::stop_token &stop);

} // namespace ReviewSteps
} // namespace kruv
