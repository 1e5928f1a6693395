// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/OutputTask.h"

#include "tasks/OriginalFile.h"
#include "tasks/TaskCompletionSink.h"

#include <algorithm>
#include <stdexcept>

namespace kruv {

namespace {

[[noreturn]] void refuse(const QString &sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

} // namespace

void OutputTask::doStartTask()
{
    const std::vector<FileStamp> stamps = stampSources();
    StagedOutputs outputs(m_mayReplace ? FileCommit::Existing::Replace : FileCommit::Existing::Keep);
    if (!deleteOriginal()) {
        outputs.protect(sources());
    }
    try {
        walk(outputs, stamps);
    } catch (const std::exception &failure) {
        fail(QString::fromUtf8(failure.what()));
    }
    if (error() && outputs.isShortOfSpace()) {
        results()->appendLine(tr("No space left, or nearly none, on the output folder's disk."), *this);
    }
}

void OutputTask::walk(StagedOutputs &outputs, const std::vector<FileStamp> &stamps)
{
    inspectSources();
    make(outputs);
    if (error() && !cancelled()) {
        blameSources();
    }
    if (mayGoOn()) {
        dress(outputs);
    }
    if (mayGoOn() && !outputs.isEmpty() && owesProof(outputs)) {
        proveOutputs(outputs);
    }
    if (!mayGoOn()) {
        return;
    }
    requireUnchanged(stamps);
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
    if (mayGoOn()) {
        releaseOriginals(outputs, stamps);
    }
    if (!m_flaw.isEmpty()) {
        setError(true);
    }
}

std::vector<FileStamp> OutputTask::stampSources() const
{
    std::vector<FileStamp> stamps;
    for (const QString &source : sources()) {
        const auto stamp = FileStamp::of(source);
        if (!stamp) {
            refuse(tr("%1 is missing or is no file that can be read.").arg(source));
        }
        stamps.push_back(*stamp);
    }
    return stamps;
}

void OutputTask::requireUnchanged(const std::vector<FileStamp> &stamps) const
{
    const QStringList files = sources();
    for (std::size_t index = 0; index < stamps.size(); ++index) {
        const QString &source = files[static_cast<qsizetype>(index)];
        const auto now = FileStamp::of(source);
        if (!now || !now->hasContentOf(stamps[index])) {
            refuse(tr("%1 was changed or removed while it was read. Nothing was made of it; try again.")
                       .arg(source));
        }
    }
}

bool OutputTask::owesProof(const StagedOutputs &outputs) const
{
    // Some tools don't notice that their last write failed.
    return deleteOriginal() || (queue() && queue()->provesOutputs()) || outputs.isShortOfSpace();
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

void OutputTask::releaseOriginals(const StagedOutputs &outputs, const std::vector<FileStamp> &stamps)
{
    const QStringList &made = outputs.committed();
    const QStringList originals = deleteOriginal() ? sources() : QStringList();
    for (qsizetype index = 0; index < originals.size(); ++index) {
        const QString &source = originals[index];
        const bool isOutput = std::ranges::any_of(
            made, [&source](const QString &output) { return FileStamp::isSameFile(source, output); });
        if (isOutput || !isOriginal(source)) {
            continue;
        }
        if (!m_flaw.isEmpty()) {
            OriginalFile::keep(*this, source, m_flaw);
            return;
        }
        OriginalFile::deleteAfterCommit(*this, source, stamps[static_cast<std::size_t>(index)], outputs);
    }
}

} // namespace kruv
