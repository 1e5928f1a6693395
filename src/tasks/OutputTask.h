// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/FileStamp.h"
#include "tasks/StagedOutputs.h"
#include "tasks/StagedTask.h"

#include <QCoreApplication>

#include <optional>
#include <vector>

namespace kruv {

/// A job that makes files. This is the one road that outputs walk: the sources are stamped, the outputs made
/// in a staging folder and dressed there, proven to hold what the sources do, the sources looked at again,
/// the outputs given their names, and last of all the originals may go. A job that fails or is cancelled on
/// the way leaves nothing under a final name.
class OutputTask : public StagedTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::OutputTask)
public:
    /// What there is under an output's name is replaced when the new file is complete; else it stays and the
    /// job fails. Before the start.
    void setMayReplace(bool mayReplace) { m_mayReplace = mayReplace; }
    /// The file that may be replaced, as it was when that was agreed: one that somebody changed or made since
    /// stays, and the job fails. Before the start.
    void setReplaced(const std::optional<FileStamp> &replaced) { m_replaced = replaced; }
    /// Folders of its outputs that are not there are made. Before the start.
    void setMakesFolders(bool makesFolders) { m_makesFolders = makesFolders; }
    /// Its outputs are proven whatever else is asked for. Before the start.
    void setProves(bool proves) { m_proves = proves; }
    ProofNote proof() const override { return m_proof; }
    EntryRecord plannedEntry() const override;
    JobOutline outline() const override;
    std::optional<Receipt> receipt() const override;
    /// For outputs that are made, but lack something: the job goes on and commits them, then it fails, and
    /// its originals stay for this reason, a clause. What a person should know was said by then. The first
    /// reason counts. Before the start, or by the job itself.
    void failAfterwards(const QString &reason);
    QStringList remarks() const override { return m_remarks; }

protected:
    using StagedTask::StagedTask;

    void foresee() override;
    /// The tools of the resources folder that it can't do without, as far as that is known beforehand.
    virtual QStringList tools() const { return {}; }
    /// The files that the outputs are made from.
    virtual QStringList sources() const { return {fileName()}; }
    /// Looks at the sources before anything is made of them. What it throws fails the job.
    virtual void inspectSources() {}
    /// What is wrong with the sources of a job that failed while it made its outputs, a sentence that then
    /// stands for all that the tools said; empty where nothing is.
    virtual QString sourceComplaint() { return {}; }
    /// Announces the outputs and makes them.
    virtual void make(StagedOutputs &outputs) = 0;
    /// Completes what was made: tags, pictures, marks.
    virtual void dress(StagedOutputs &) {}
    /// Shows that the staged outputs hold what they owe to the sources, or says why that can't be shown.
    /// Throws where they don't. What a cancelled job returns is not read.
    virtual ProofNote prove(const StagedOutputs &outputs);
    /// Shows how far the proof is. False where the job is not to go on.
    bool showProof(double percent);
    /// Whether the job, which failed before it committed anything, finds done what it was to do. Throws where
    /// what it finds is something else.
    virtual bool wasMadeByAnother(const StagedOutputs &) { return false; }
    /// Runs when the outputs have their names, before originals go.
    virtual void committed(const StagedOutputs &) {}
    /// Whether this source goes where originals are to be deleted.
    virtual bool isOriginal(const QString &) const { return true; }

    void addRemark(const QString &sentence);

private:
    void doStartTask() final;
    void walk(StagedOutputs &outputs);
    void lookForAnother(const StagedOutputs &outputs);
    std::vector<Receipt::File> stampSources() const;
    void requireUnchanged() const;
    /// As far as that is known by now.
    bool originalsStay() const;
    void stampOutputs(const StagedOutputs &outputs);
    bool owesProof(const StagedOutputs &outputs) const;
    void blameSources();
    void proveOutputs(const StagedOutputs &outputs);
    void releaseOriginals(const StagedOutputs &outputs);
    void releaseOriginal(Receipt::File &source, const StagedOutputs &outputs);

    bool m_mayReplace = false;
    std::optional<FileStamp> m_replaced;
    bool m_makesFolders = false;
    bool m_proves = false;
    QStringList m_remarks;
    ProofNote m_proof;
    std::vector<Receipt::File> m_sources; // as they were at the start
    std::vector<Receipt::File> m_outputs; // that have their names
    QString m_flaw;
};

} // namespace kruv
