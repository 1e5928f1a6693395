// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/ExistingFiles.h"
#include "base/FileStamp.h"
#include "base/FoldedNames.h"
#include "formats/ConversionRequest.h"
#include "tabs/OutputPlace.h"
#include "tabs/PlanEntry.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace kruv {

/// Where each file of a command would be written.
class OutputPlan
{
    Q_DECLARE_TR_FUNCTIONS(kruv::OutputPlan)
public:
    struct Entry
    {
        QString source;
        QString folder;
        QString output;
        /// What lies there already is replaced.
        bool mayReplace = false;
        /// As it was when that was agreed; nothing where that is not known any more.
        std::optional<FileStamp> replaced = {};
        /// Why the original stays though originals go, a clause; empty where it may go.
        QString keepReason = {};
        ConversionRequest::Earlier earlier = ConversionRequest::Earlier::None;
        std::int64_t goneSince = 0; ///< as in ConversionRequest
        /// It is there already, as it is to be: lists tell of it, but nothing is made.
        bool isDone = false;
        /// Why that is known, a sentence; empty where a receipt says so.
        QString doneReason = {};
        /// It is no audio, and goes along as it is.
        bool isCopy = false;
    };
    /// A text about outputs, written once they are all there.
    struct List
    {
        QString path;
        /// The part of the name behind the number that tells two apart: "ffp.txt".
        QString extension;
        /// Of the outputs that it is about, or an empty text for all.
        QString folder;
        /// The list that an option asks for, or one of those that are made in place of older ones.
        enum class Kind { OfOption, Md5, Fingerprints, St5 };
        Kind kind = Kind::OfOption;
        QString madeAnewOf = {}; ///< the older one; only while the command is planned
    };

    /// `threads` read tags where the outputs' names are made of these.
    OutputPlan(const QStringList &sources, const OutputPlace &place, const QString &extension,
               std::size_t threads = 1);

    /// One that was settled before.
    OutputPlan(std::vector<Entry> entries, std::vector<List> lists);

    const std::vector<Entry> &entries() const { return m_entries; }
    std::vector<Entry> &entries() { return m_entries; }
    void addEntry(const Entry &entry) { m_entries.push_back(entry); }
    /// Those that are audio.
    QStringList outputs() const;
    /// The folders of these, each once.
    QStringList folders() const;
    QStringList outputsFor(const List &list) const;
    /// False where there is one of that path already.
    bool addList(const List &list);
    const std::vector<List> &lists() const { return m_lists; }
    /// Whether a folder's file system takes two names for one.
    using NameTest = std::function<bool(const QString &folder, const QString &first, const QString &second)>;
    /// Names the sources that would give the same output, the first few, where there are such: writing both
    /// would lose one. `areOne` is asked of names that some file system would take for one.
    std::optional<QString> collision(const NameTest &areOne = FoldedNames::areOne) const;
    /// The outputs and lists whose names are taken, in list order.
    QStringList existing() const;
    /// What becomes of those.
    void settleExisting(ExistingFiles choice);
    /// Leaves out all sources that would give the same output. Returns what collision() does.
    std::optional<QString> refuseCollisions(const NameTest &areOne = FoldedNames::areOne);
    /// Of folders that get the files of several folders, a sentence each.
    QStringList merges() const;
    /// What is not made, and why.
    std::vector<PlanEntry> leftOut() const;
    /// Notes it as not made; it may be none of the entries.
    void leaveOut(const Entry &entry, PlanEntry::Action action, const QString &reason);

private:
    /// Two entries, the later one last.
    using Clash = std::pair<std::size_t, std::size_t>;
    std::vector<Clash> clashes(const NameTest &areOne) const;
    std::optional<QString> textOf(const std::vector<Clash> &clashes) const;

    static bool isInTheWay(const Entry &entry);
    bool isInTheWay(const List &list) const;

    std::vector<Entry> m_entries;
    std::vector<List> m_lists;
    std::vector<PlanEntry> m_leftOut;
    /// Names that some file system takes for one are one: of outputs, and of folders in which they lie.
    bool m_foldsNames = false;
    bool m_foldsFolders = false;
};

} // namespace kruv
