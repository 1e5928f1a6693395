// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/ConversionTask.h"

#include "audio/AudioContent.h"
#include "audio/ContentProbe.h"
#include "audio/EncodeCoreAudioSync.h"
#include "audio/Proof.h"
#include "audio/TagsAround.h"
#include "base/FileStamp.h"
#include "base/PathNames.h"
#include "formats/AudioLimitsCheck.h"
#include "formats/FailureAdvice.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/StatedFormat.h"
#include "formats/TagCopy.h"
#include "platform/Resources.h"
#include "tags/TagAccess.h"
#include "tags/TagsObject.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <stdexcept>

namespace kruv {

namespace {

const QString sameAudio = QStringLiteral("same-audio");

/// What is worth a question even where every sample changes.
bool isHalfOrComputedAnew(const QString &source)
{
    const AudioContent::Kind kind = ContentProbe::of(source).kind;
    return kind == AudioContent::Kind::Hybrid || kind == AudioContent::Kind::Dsd;
}

} // namespace

ConversionTask::ConversionTask(TaskCompletionSink *queue, const ConversionRequest &request)
    : AudioOutputTask(queue, request.source)
    , m_request(request)
{
    setMayReplace(request.mayReplace);
}

JobOutline ConversionTask::outline() const
{
    using Earlier = ConversionRequest::Earlier;
    using Existing = JobOutline::Existing;
    return {.sources = {fileName()},
            .outputs = {m_request.output},
            .existing = m_request.earlier == Earlier::Kept      ? Existing::Compared
                        : m_request.earlier == Earlier::Renewed ? Existing::Renewed
                                                                : Existing::Usual};
}

qint64 ConversionTask::estimatedWork() const
{
    return QFileInfo(fileName()).size();
}

void ConversionTask::foresee()
{
    identifySource();
    AudioOutputTask::foresee();
}

qint64 ConversionTask::foreseenBytes() const
{
    if (target() || !m_sourceAudio) {
        return 0;
    }
    const std::int64_t bytesPerSample = (m_sourceAudio->bitsPerChannel + 7) / 8;
    return m_sourceAudio->totalSamples * bytesPerSample * m_sourceAudio->channels;
}

QStringList ConversionTask::tools() const
{
    const ToolStep *step = sourceFormat().toWav;
    return step ? QStringList{QString::fromLatin1(step->tool)} : QStringList();
}

void ConversionTask::make(StagedOutputs &outputs)
{
    m_outputs = &outputs;
    identifySource();
    using Earlier = ConversionRequest::Earlier;
    const bool isThere = m_request.earlier != Earlier::None && FileCommit::isTaken(m_request.output);
    if (isThere && m_request.earlier != Earlier::Renewed) {
        requireOwn(outputs);
        if (m_request.earlier == Earlier::Kept || !mayGoOn()) {
            return;
        }
        m_found.reset();
    }
    const bool needsTagsOnly = isThere && m_request.earlier == Earlier::Renewed && lacksTagsOnly(outputs);
    m_staged = outputs.add(m_request.output);
    if (needsTagsOnly) {
        takeOver();
    } else if (mayGoOn()) {
        makeOutput();
    }
    if (mayGoOn() && !outputs.wasMade(m_request.output)) {
        fail(tr("%1 was not written, whatever the tool said.").arg(m_request.output));
    }
}

/// Whether the output that is there differs from a new one in tags that came or changed, and in nothing else.
bool ConversionTask::lacksTagsOnly(const StagedOutputs &outputs)
try {
    m_staged = m_request.output;
    const TagAccess *tags = target() ? target()->tags : nullptr;
    return tags && sourceFormat().tags && prove(outputs).kind == sameAudio && mayGoOn() &&
           TagCopy::covers(*sourceFormat().tags->read(fileName()), *tags->read(m_staged));
} catch (const std::exception &) { // it is made anew
    return false;
}

/// What is there already, as the new output that gets its tags.
void ConversionTask::takeOver()
{
    if (!QFile::copy(m_request.output, m_staged)) {
        throw std::runtime_error(
            tr("%1 could not be copied to get its tags anew.").arg(m_request.output).toStdString());
    }
    addRemark(tr("%1 holds the same audio: only its tags were copied anew.").arg(m_request.output));
}

/// Throws where what lies in the output's place can't be the job's own.
void ConversionTask::requireOwn(const StagedOutputs &outputs)
{
    QString reason;
    try {
        m_staged = m_request.output;
        m_found = ProofNote();
        m_found = prove(outputs);
        reason = m_found->holds() || !mayGoOn() ? QString() : m_found->unproven;
    } catch (const std::exception &disproof) {
        reason = QString::fromUtf8(disproof.what());
    }
    if (!reason.isEmpty()) {
        if (reason.endsWith(u'.')) { // it becomes a clause
            reason.chop(1);
        }
        throw std::runtime_error(
            tr("%1 was there before, and may not be what was made of %2: %3. It was left as it "
               "is; move it away and try again.")
                .arg(m_request.output, fileName(), reason)
                .toStdString());
    }
}

/// While this job was at it, or before it came to its turn.
bool ConversionTask::wasMadeByAnother(const StagedOutputs &outputs)
{
    const QString &output = m_request.output;
    if (m_request.earlier != ConversionRequest::Earlier::Kept || !FileCommit::isTaken(output)) {
        return false;
    }
    const auto sourceIsThere = [this] { return QFileInfo::exists(fileName()); };
    if (!m_found && sourceIsThere()) {
        try {
            identifySource();
            requireOwn(outputs);
            return mayGoOn();
        } catch (const std::exception &) {
            if (sourceIsThere()) { // else it went meanwhile
                throw;
            }
        }
    }
    const auto stamp = FileStamp::of(output);
    if (sourceIsThere() || m_request.goneSince == 0 || !stamp || !stamp->isNoOlderThan(m_request.goneSince)) {
        return false;
    }
    Formats::requireContent(output, target() ? target() : Formats::ofType(PathNames::fileType(output)));
    return true;
}

void ConversionTask::identifySource()
{
    m_sourceFormat = Formats::identify(fileName());
    if (QFile source(fileName()); !m_sourceFormat && !source.open(QIODevice::ReadOnly)) {
        throw std::runtime_error(
            tr("%1 can't be read: %2.").arg(fileName(), source.errorString()).toStdString());
    }
    if (!m_sourceFormat || !m_sourceFormat->decode) {
        throw std::runtime_error(tr("%1 holds no audio of a kind that can be read, whatever its name says.")
                                     .arg(fileName())
                                     .toStdString());
    }
    if (target()) {
        AudioLimitsCheck::require(*target(), fileName(), sourceAudio());
    } else if (makesAiff() && sourceAudio().channels > 0 && sourceAudio().sampleRate == 0) {
        // Some decoders never end over the logarithm that AIFF's way to write it takes.
        throw std::runtime_error(tr("%1 states no sample rate, which AIFF needs. Decode it to WAV instead.")
                                     .arg(fileName())
                                     .toStdString());
    }
}

ProofNote ConversionTask::prove(const StagedOutputs &)
{
    Formats::requireContent(m_staged,
                            target() ? target() : Formats::ofType(PathNames::fileType(m_request.output)));
    const auto progress = [this](double percent) { return showProof(percent); };
    const bool isLossy = m_sourceFormat->isLossy() || (target() && target()->isLossy());
    const QString obstacle =
        isLossy && !isHalfOrComputedAnew(fileName()) ? QString() : Proof::obstacle(fileName(), m_staged);
    const bool isChange = !obstacle.isEmpty() && Proof::changesSamples(fileName());
    if (!obstacle.isEmpty() && !isChange) {
        return {.unproven = obstacle};
    }
    if (isLossy || isChange) {
        const auto finding = Proof::sameLength(fileName(), m_staged, progress);
        if (!finding || (isChange && !m_request.mayDeleteChanged)) {
            return {.unproven = agreementTo(obstacle)};
        }
        return {.kind = QStringLiteral("same-length"), .decoder = finding->decoder};
    }
    const auto finding = Proof::sameAudio({.sources = {fileName()}, .outputs = {m_staged}}, progress);
    return finding ? ProofNote{.kind = sameAudio,
                               .digest = QString::fromLatin1(finding->digest.toHex()),
                               .decoder = finding->decoder}
                   : ProofNote();
}

/// The reason, with what would let the original go all the same.
QString ConversionTask::agreementTo(const QString &reason) const
{
    return deleteOriginal()
               ? tr("%1; --delete-changed, or a yes to the question about changed sound, would let "
                    "it go all the same")
                     .arg(reason)
               : reason;
}

bool ConversionTask::makesAiff() const
{
    return Formats::ofType(PathNames::fileType(m_request.output)) == &aiffFormat;
}

void ConversionTask::copyTagsIntoAiff(const QString &status)
{
    if (!makesAiff() || !sourceFormat().tags) {
        return;
    }
    showStatus(status);
    try {
        TagCopy::copy(sourceFormat(), fileName(), aiffFormat, staged());
    } catch (const std::exception &failure) {
        appendResults(tr("Error writing tags to file:\n%1").arg(QString::fromUtf8(failure.what())));
        failAfterwards(tr("its tags could not be copied"));
    }
}

QString ConversionTask::sourceForTools()
{
    if (&sourceFormat() != &flacFormat || TagsAround::inWords(fileName()).isEmpty()) {
        return fileName();
    }
    QString copy = m_outputs->scratch(PathNames::folderOf(m_request.output), flacFormat.extension());
    TagsAround::copyWithout(fileName(), copy, [this] { return mayGoOn(); });
    return copy;
}

QString ConversionTask::scratchWav()
{
    return m_outputs->scratch(PathNames::folderOf(m_request.output), QStringLiteral("wav"));
}

bool ConversionTask::runStep(const ToolStep &step, const ToolRequest &request)
{
    return run(step.tool, step.arguments(request), step.read, tr(step.progress));
}

bool ConversionTask::run(const char *tool, const QStringList &arguments, ToolReader read,
                         const QString &progress)
{
    constexpr qsizetype enough = qsizetype{64} * 1024;
    m_toolWords.clear();
    const bool done = runTool(toolPath(QString::fromLatin1(tool)), arguments, [&](const QString &text) {
        m_toolWords += text;
        if (m_toolWords.size() > 2 * enough) { // what matters is said first or last
            m_toolWords.remove(enough, m_toolWords.size() - 2 * enough);
        }
        take(read(text, title()), progress);
    });
    if (error() && FailureAdvice::essence(results()->results(*this)).isEmpty()) {
        appendResults(m_toolWords); // what its reader passed over may say why
    }
    appendResults(QStringLiteral("\n")); // what follows is another tool's
    return done;
}

void ConversionTask::take(const ToolPiece &piece, const QString &progress)
{
    if (piece.percentage) {
        QString status = progress; // some tools' jobs show the bar alone
        if (progress.contains(u"%2")) {
            status = progress.arg(piece.percentageText, piece.detail);
        } else if (progress.contains(u"%1")) {
            status = progress.arg(piece.percentageText);
        }
        showProgress(status, *piece.percentage);
    }
    appendResults(piece.results);
    if (piece.failed && !cancelled()) {
        setError(true);
    }
}

bool ConversionTask::runShntool(const QStringList &arguments, ToolReader read, const QString &progress)
{
    const bool done = run("shntool", arguments, read, progress);
    const QString made = PathNames::outputPath(PathNames::folderOf(m_staged), arguments.constLast(),
                                               PathNames::extension(m_staged));
    return done && (made == m_staged || QFile::rename(made, m_staged));
}

bool ConversionTask::convert(const QString &input, const QString &output, FormatType formatType,
                             FileType fileType)
{
    return mayGoOn() && EncodeCoreAudioSync(*this, input, output, formatType, fileType).doEncodeCall() &&
           mayGoOn();
}

const AudioFormatObject &ConversionTask::sourceAudio() const
{
    if (!m_sourceAudio) {
        m_sourceAudio = statedFormat(fileName());
    }
    return *m_sourceAudio;
}

bool ConversionTask::isBeyondWav() const
{
    constexpr std::int64_t most = 0xFFFFFFFF - 65536; // bytes of audio, with room for chunks around it
    const AudioFormatObject &audio = sourceAudio();
    const std::int64_t bytesPerSample = (audio.bitsPerChannel + 7) / 8;
    return audio.totalSamples > most / std::max<std::int64_t>(bytesPerSample * audio.channels, 1);
}

bool ConversionTask::makeWav(const QString &wav, const ToolStep *step)
{
    return step && !isBeyondWav() ? runStep(*step, {.input = sourceForTools(), .output = wav})
                                  : convert(fileName(), wav, FormatType::LinearPcm, FileType::Wave);
}

} // namespace kruv
