// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/FixTask.h"

#include "base/PathNames.h"
#include "base/Preferences.h"
#include "base/TextFile.h"
#include "checksums/FileHash.h"
#include "checksums/FlacFingerprint.h"
#include "checksums/ListText.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/SetProof.h"
#include "formats/ShntoolConversion.h"
#include "formats/TagCopy.h"
#include "platform/MainThread.h"
#include "platform/Resources.h"
#include "regex/Regex.h"
#include "tasks/TaskCompletionSink.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolOutput.h"

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <utility>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(fixLog, "kruv.fix")

/// By its name, and with tags that are copied.
const Format *taggedFormatOf(const QString &path)
{
    const Format *format = Formats::ofType(PathNames::fileType(path));
    return format && format->takenBy.fix && format->tags ? format : nullptr;
}

} // namespace

FixTask::FixTask(TaskCompletionSink *queue, Request request, std::function<void()> clearTab)
    : AudioOutputTask(queue, {})
    , m_request(std::move(request))
    , m_clearTab(std::move(clearTab))
{
    setTitle(tr("Fixing"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
    int position = 0;
    for (const QString &file : m_request.fileNames) {
        m_fileNameDictionary.insert(PathNames::nameWithoutExtension(file), QString::number(++position));
    }
}

QStringList FixTask::fixArguments(const QStringList &fileNames, const Format &target,
                                  const QString &outputPath, int flacLevel)
{
    QString line = QStringLiteral("fix -P pct -O never -k -d");
    QStringList arguments = line.split(u' ');
    arguments << outputPath << QStringLiteral("-o");
    if (&target == &flacFormat) {
        line = QStringLiteral("cust ext=flac { flac -s -%1 -o %f - }").arg(flacLevel);
        arguments << line.split(u' ');
    } else {
        arguments << target.extension();
    }
    return arguments << fileNames;
}

QString FixTask::disc(const QString &path)
{
    const QString disc = PathNames::disc(path);
    return disc.contains(u'/') ? QString() : disc;
}

QString FixTask::stripPercent(const QString &text)
{
    return Regex(QStringLiteral("[0-9]+%")).replace(text, u"");
}

QStringList FixTask::fixedFiles(const Request &request)
{
    QStringList files;
    for (const QString &source : request.fileNames) {
        files.append(PathNames::outputPath(request.outputPath, source, request.target->extension()));
    }
    return files;
}

FixTask::Lists FixTask::lists(const Request &request, const Preferences &preferences)
{
    Lists lists;
    const QStringList files = fixedFiles(request);
    if (request.target == &flacFormat && request.list == ListKind::Fingerprints) {
        lists[ListText::pathIn(request.outputPath, preferences, QStringLiteral("fingerprint"),
                               preferences.string(QStringLiteral("ffpExtension")))] = files;
    } else if (request.target == &shortenFormat && request.list == ListKind::Md5) {
        lists[ListText::pathIn(request.outputPath, preferences, QStringLiteral("md5sum"),
                               QStringLiteral("md5"))] = files;
    } else if (request.target == &shortenFormat && request.list == ListKind::Md5ByDisc) {
        for (const QString &file : files) {
            const QString name = QStringLiteral("Disc%1.md5").arg(disc(file));
            lists[ListText::joined(request.outputPath, name)].append(file);
        }
    }
    return lists;
}

QStringList FixTask::outputs(const Request &request, const Preferences &preferences)
{
    return fixedFiles(request) + lists(request, preferences).keys();
}

void FixTask::make(StagedOutputs &outputs)
{
    for (const QString &tool :
         tools()) { // one that is missed only after the long run lets it come to nothing
        ToolCatalog::requireLaunchable(toolPath(tool));
    }
    for (const QString &output : FixTask::outputs(m_request, queue()->preferences())) {
        outputs.add(output);
    }
    const QString staging = outputs.stagingFor(m_request.outputPath);
    doFixCall(staging);
    checkOutputs(outputs);
    appendResults(m_totalOutput.replace(staging, m_request.outputPath));
}

JobOutline FixTask::outline() const
{
    return {m_request.fileNames, FixTask::outputs(m_request, queue()->preferences())};
}

QStringList FixTask::tools() const
{
    const QStringList all{QStringLiteral("shntool"), QStringLiteral("metaflac")};
    return m_request.list == ListKind::Fingerprints ? all : all.first(1);
}

void FixTask::doFixCall(const QString &staging)
{
    const QStringList &files = m_request.fileNames;
    runTool(
        toolPath(QStringLiteral("shntool")),
        fixArguments(files, *m_request.target, staging, m_request.flacLevel),
        [this](const QString &piece) { processTaskOutput(piece); }, PathNames::folderOf(files.at(0)));
}

/// The tool ends with success also where an encoder failed behind its back, as on a full disk.
void FixTask::checkOutputs(const StagedOutputs &outputs)
{
    const bool encoderFailed = m_totalOutput.contains(u"child encoder process");
    for (const QString &file : fixedFiles(m_request)) {
        if (mayGoOn() && (encoderFailed || !outputs.wasMade(file))) {
            fail(tr("The fixed files are not complete: %1.")
                     .arg(encoderFailed ? tr("an encoder failed") : tr("%1 is missing").arg(file)));
        }
    }
}

void FixTask::dress(StagedOutputs &outputs)
{
    copyTags(outputs);
    const Lists all = lists(m_request, queue()->preferences());
    for (auto list = all.cbegin(); list != all.cend() && mayGoOn(); ++list) {
        const bool ofFingerprints = m_request.list == ListKind::Fingerprints;
        showStatus(ofFingerprints ? tr("Creating FFP") : tr("Creating MD5"));
        const QString text =
            ofFingerprints ? fingerprintList(outputs, list.value()) : md5List(outputs, list.value());
        const QString problem = mayGoOn() ? TextFile::write(outputs.stagedPath(list.key()), text) : QString();
        if (!problem.isEmpty()) {
            fail(tr("The list %1 could not be written: %2.").arg(list.key(), problem));
        }
    }
}

ProofNote FixTask::prove(const StagedOutputs &outputs)
{
    QStringList fixed;
    for (const QString &file : fixedFiles(m_request)) {
        fixed.append(outputs.stagedPath(file));
    }
    SetProof proof(Proof::Change::SectorFilled, [this](double percent) { return showProof(percent); });
    if (const auto finding = proof.show(m_request.fileNames, fixed)) {
        requireSectorBoundaries(*finding);
    }
    return proof.note();
}

/// Each track but the last ends on the sector boundary before the end of its source.
void FixTask::requireSectorBoundaries(const Proof::Finding &finding) const
{
    const std::int64_t sector = std::max(finding.format.sampleRate / Proof::sectorsInASecond, 1U);
    std::int64_t wanted = 0;
    std::int64_t made = 0;
    for (std::size_t track = 0; track + 1 < finding.outputLengths.size(); ++track) {
        wanted += finding.sourceLengths[track];
        made += finding.outputLengths[track];
        if (made != wanted - wanted % sector) {
            throw std::runtime_error(
                tr("The output of %1 does not end on the sector boundary before the end of its source.")
                    .arg(m_request.fileNames[static_cast<qsizetype>(track)])
                    .toStdString());
        }
    }
}

void FixTask::processTaskOutput(const QString &piece)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    m_totalOutput += stripPercent(text.toString());
    showCurrentFile(text);
    if (const auto percentage = ShntoolConversion::percentage(text)) {
        setProgressIndicatorValue(*percentage);
        setTopTextFieldString(tr("Fixing: %1%").arg(*percentage, 0, 'f', 6));
        publish(&KruvTask::updateStatus);
    }
}

/// The path stands in "Fixing [path] (length) --> [output] :", which comes in several pieces at times.
void FixTask::showCurrentFile(QStringView piece)
{
    constexpr QStringView start = u"Fixing [";
    m_currentLine += piece;
    const qsizetype from = m_currentLine.lastIndexOf(start);
    if (from < 0) {
        m_currentLine = m_currentLine.right(start.size());
        return;
    }
    m_currentLine.remove(0, from);
    const qsizetype end = m_currentLine.indexOf(u"] (");
    if (end < 0) {
        return;
    }
    const QString name =
        PathNames::nameWithoutExtension(m_currentLine.sliced(start.size(), end - start.size()));
    m_currentLine.clear();
    setTextFieldString(
        tr("%1 (%2 of %3)")
            .arg(name, m_fileNameDictionary.value(name), QString::number(m_request.fileNames.size())));
    publish(&KruvTask::setTextFieldValue);
}

void FixTask::copyTags(const StagedOutputs &outputs)
{
    if (m_request.target != &aiffFormat && m_request.target != &flacFormat) {
        return;
    }
    const QStringList files = fixedFiles(m_request);
    for (qsizetype index = 0; index < files.size() && !cancelled(); ++index) {
        const QString &source = m_request.fileNames[index];
        const Format *format = taggedFormatOf(source);
        if (!format) {
            continue;
        }
        showStatus(tr("Writing tags"));
        try {
            TagCopy::copy(*format, source, *m_request.target, outputs.stagedPath(files[index]));
        } catch (const std::exception &failure) {
            qCWarning(fixLog, "Exception trying to tag fixed files: %s", failure.what());
            if (deleteOriginal()) {
                failAfterwards(tr("the tags of %1 could not be copied").arg(source));
            }
        }
    }
}

QString FixTask::md5List(const StagedOutputs &outputs, const QStringList &files)
{
    QString text = ListText::md5Header();
    restartProgress();
    for (qsizetype index = 0; index < files.size() && !cancelled(); ++index) {
        const QString name = PathNames::lastPathComponent(files[index]);
        setTextFieldString(name);
        publish(&KruvTask::setTextFieldValue);
        const auto hash = FileHash::hashOfFileAtPath(
            QFile::encodeName(outputs.stagedPath(files[index])), FileHash::Algorithm::MD5, [&](double share) {
                constexpr double percent = 100.0;
                showProgress(tr("Creating MD5"), percent * (static_cast<double>(index) + share) /
                                                     static_cast<double>(files.size()));
                return !cancelled();
            });
        if (hash.problem == FileHash::Problem::None) {
            text += ListText::md5Line(hash.digest, name);
        } else {
            fail(tr("%1 is not in the list: %2").arg(files[index], hash.message));
        }
    }
    return text;
}

QString FixTask::fingerprintList(const StagedOutputs &outputs, const QStringList &files)
{
    QString text = ListText::ffpHeader();
    for (const QString &file : files) {
        if (cancelled()) {
            break;
        }
        if (const QString line = fingerprint(outputs.stagedPath(file)); isFingerprint(line)) {
            text += line;
        } else {
            failAfterwards(tr("%1 is not in the list: metaflac told no fingerprint of it.").arg(file));
        }
    }
    return text;
}

bool FixTask::isOriginal(const QString &source) const
{
    const Format *format = Formats::ofType(PathNames::fileType(source));
    return format && format->takenBy.fix;
}

void FixTask::stopTask()
{
    MainThread::run(m_clearTab);
    AudioOutputTask::stopTask();
}

} // namespace kruv
