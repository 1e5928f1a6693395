// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/OutputTask.h"

#include "base/Util.h"
#include "platform/Resources.h"
#include "tasks/OriginalFile.h"
#include "tasks/StagingFolder.h"
#include "tasks/TaskCompletionSink.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolStop.h"

#include <QFileInfo>

#include <algorithm>
#include <stdexcept>

namespace kruv {

namespace {

[[noreturn]] void refuse(const QString &sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

} // namespace

EntryRecord OutputTask::plannedEntry() const
{
    EntryRecord entry = KruvTask::plannedEntry();
    entry.keepReason = m_flaw;
    if (m_mayReplace && QFileInfo::exists(entry.output)) {
        entry.action = EntryRecord::Action::Replace;
    }
    return entry;
}

JobOutline OutputTask::outline() const
{
    JobOutline outline = KruvTask::outline();
    outline.sources = sources();
    return outline;
}

bool OutputTask::originalsStay() const
{
    return !deleteOriginal() || !m_flaw.isEmpty();
}

void OutputTask::foresee()
{
    static_cast<void>(stampSources());
    inspectSources();
    for (const QString &tool : tools()) {
        ToolCatalog::requireLaunchable(toolPath(tool));
    }
    const QStringList outputs = outline().outputs;
    for (const QString &output : outputs) {
        StagedOutputs::requireOther(output, originalsStay() ? sources() : QStringList());
        StagingFolder::requirePossible(QFileInfo(output).path());
    }
}

std::optional<Receipt> OutputTask::receipt() const
{
    if (m_outputs.empty()) {
        return std::nullopt;
    }
    return Receipt{.sources = m_sources,
                   .outputs = m_outputs,
                   .proof = m_proof.kind,
                   .digest = m_proof.digest,
                   .decoder = m_proof.decoder};
}

void OutputTask::doStartTask()
{
    StagedOutputs outputs(m_mayReplace ? FileCommit::Existing::Replace : FileCommit::Existing::Keep);
    if (originalsStay()) {
        outputs.protect(sources());
    }
    outputs.replaceOnly(m_replaced);
    if (m_makesFolders) {
        outputs.makeFolders();
    }
    try {
        m_sources = stampSources();
        walk(outputs);
    } catch (const std::exception &failure) {
        fail(QString::fromUtf8(failure.what()));
    }
    if (error() && !cancelled() && outputs.committed().isEmpty()) {
        lookForAnother(outputs);
    }
    if (error() && outputs.isShortOfSpace()) {
        results()->appendLine(tr("No space left, or nearly none, on the output folder's disk."), *this);
    }
}

/// Of two processes that do the same, one is faster.
void OutputTask::lookForAnother(const StagedOutputs &outputs)
{
    setError(false); // proofs are not for jobs that have failed
    bool isDone = false;
    try {
        isDone = wasMadeByAnother(outputs);
    } catch (const std::exception &failure) {
        results()->setResults(QString::fromUtf8(failure.what()) + u'\n', *this);
    }
    setError(!isDone);
    if (isDone) {
        results()->setResults({}, *this);
    }
}

void OutputTask::walk(StagedOutputs &outputs)
{
    inspectSources();
    make(outputs);
    if (error() && !cancelled()) {
        blameSources();
    }
    if (mayGoOn() && !outputs.isEmpty()) {
        const ToolStop whileDressing(stopToken());
        dress(outputs);
    }
    if (mayGoOn() && !outputs.isEmpty() && owesProof(outputs)) {
        proveOutputs(outputs);
    }
    if (!mayGoOn()) {
        return;
    }
    requireUnchanged();
    for (const QString &output : originalsStay() ? outputs.paths() : QStringList()) {
        StagedOutputs::requireOther(output, sources());
    }
    if (!startFinishing()) {
        return;
    }
    if (deleteOriginal() && queue()) {
        queue()->taskOnlyWaits(*this);
    }
    outputs.commit(deleteOriginal());
    for (const QString &remark : m_remarks) {
        appendResults(remark + u'\n');
    }
    committed(outputs);
    stampOutputs(outputs);
    if (mayGoOn()) {
        releaseOriginals(outputs);
    }
    if (!m_flaw.isEmpty()) {
        setError(true);
    }
}

std::vector<Receipt::File> OutputTask::stampSources() const
{
    std::vector<Receipt::File> stamped;
    for (const QString &source : sources()) {
        const auto stamp = FileStamp::of(source);
        if (!stamp) {
            refuse(tr("%1 is missing or is no file that can be read.").arg(source));
        }
        stamped.push_back({source, *stamp});
    }
    return stamped;
}

void OutputTask::requireUnchanged() const
{
    for (const Receipt::File &source : m_sources) {
        const auto now = FileStamp::of(source.path);
        if (!now || !now->hasContentOf(source.stamp)) {
            refuse(tr("%1 was changed or removed while it was read. Nothing was made of it; try again.")
                       .arg(source.path));
        }
    }
}

void OutputTask::stampOutputs(const StagedOutputs &outputs)
{
    for (const QString &output : outputs.committed()) {
        if (const auto stamp = FileStamp::of(output)) {
            m_outputs.push_back({output, *stamp});
        }
    }
}

bool OutputTask::owesProof(const StagedOutputs &outputs) const
{
    // Some tools don't notice that their last write failed.
    return m_proves || deleteOriginal() || (queue() && queue()->provesOutputs()) || outputs.isShortOfSpace();
}

void OutputTask::blameSources()
{
    if (const QString complaint = sourceComplaint(); !complaint.isEmpty()) {
        results()->setResults(complaint + u'\n', *this);
    }
}

void OutputTask::addRemark(const QString &sentence)
{
    m_remarks.append(sentence);
}

ProofNote OutputTask::prove(const StagedOutputs &)
{
    return {.unproven = tr("nothing is known that could prove its output")};
}

void OutputTask::proveOutputs(const StagedOutputs &outputs)
{
    showStatus(tr("Proving…"));
    restartProgress();
    outputs.requireMade();
    m_proof = prove(outputs);
    if (!m_proof.words.isEmpty()) {
        appendResults(tr("Proven: %1.\n").arg(m_proof.words));
    }
    if (m_proof.holds() || !mayGoOn()) {
        return;
    }
    if (deleteOriginal()) {
        failAfterwards(m_proof.unproven);
    } else {
        appendResults(tr("%1 was made, but not proven: %2.\n").arg(outputPath(), m_proof.unproven));
    }
}

bool OutputTask::showProof(double percent)
{
    showProgress(tr("Proving: %1%").arg(QString::number(percent, 'f', 0)), percent);
    return mayGoOn();
}

void OutputTask::failAfterwards(const QString &reason)
{
    if (m_flaw.isEmpty()) {
        m_flaw = reason;
    }
}

void OutputTask::releaseOriginals(const StagedOutputs &outputs)
{
    const QStringList &made = outputs.committed();
    if (!deleteOriginal() || made.isEmpty()) { // what was there already is not ours to judge by
        return;
    }
    for (Receipt::File &source : m_sources) {
        const bool isOutput = std::ranges::any_of(
            made, [&source](const QString &output) { return FileStamp::isSameFile(source.path, output); });
        if (isOutput || !isOriginal(source.path)) {
            continue;
        }
        if (!m_flaw.isEmpty()) {
            OriginalFile::keep(*this, source.path, m_flaw);
            return;
        }
        releaseOriginal(source, outputs);
    }
}

void OutputTask::releaseOriginal(Receipt::File &source, const StagedOutputs &outputs)
{
    OriginalFile::deleteAfterCommit(*this, source.path, source.stamp, outputs);
    if (queue() && !QFileInfo::exists(source.path)) {
        source.fate =
            Util::deletesToTrash(queue()->preferences()) ? Receipt::Fate::Trashed : Receipt::Fate::Deleted;
    }
}

} // namespace kruv
