// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/CDExtractTask.h"

#include "base/PathNames.h"
#include "base/TextFile.h"
#include "base/Version.h"
#include "formats/Records.h"
#include "platform/MainThread.h"
#include "platform/UnmountedDisc.h"
#include "tasks/ToolCatalog.h"
#include "tasks/ToolOutput.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace kruv {

namespace {

const QString oneFile = QStringLiteral("audio.wav");

/// The tool's own name for a track of several.
QString toolName(int track)
{
    return QStringLiteral("audio_%1.wav").arg(track, 2, 10, QLatin1Char('0'));
}

QString logPath(const CDExtractTask::Request &request)
{
    return request.outputFolder + u'/' + request.discName + QStringLiteral(".log.txt");
}

QString fileNameFor(const CDExtractTask::Request &request, int track)
{
    const auto named = std::ranges::find(request.fileNames, track,
                                         [](const QString &file) { return CdTracks::number(file); });
    return named == request.fileNames.cend() ? QString() : *named;
}

} // namespace

QStringList CDExtractTask::arguments(const Request &request)
{
    QStringList list;
    if (!request.oneTrack) {
        list.append(QStringLiteral("-B"));
    }
    list += {QStringLiteral("-L"),    QStringLiteral("1"),
             QStringLiteral("-H"),    QStringLiteral("-t"),
             request.trackString,     QStringLiteral("-paranoia"),
             QStringLiteral("-Owav"), QStringLiteral("dev=") + request.provider};
    return list;
}

std::vector<CDExtractTask::Track> CDExtractTask::tracks(const Request &request)
{
    const auto range = CdTracks::range(request.trackString).value_or(CdTracks::Range());
    const bool oneOnly = range.first == range.last;
    if (request.oneTrack && !oneOnly) {
        return {{oneFile, request.outputFolder + u'/' + oneFile}};
    }
    std::vector<Track> tracks;
    for (int track = range.first; track <= range.last; ++track) {
        const QString name = oneOnly ? oneFile : toolName(track);
        const QString file = fileNameFor(request, track);
        tracks.push_back({name, PathNames::outputPath(request.outputFolder, file.isEmpty() ? name : file,
                                                      wavFormat.extension())});
    }
    return tracks;
}

QStringList CDExtractTask::outputs(const Request &request)
{
    QStringList paths{logPath(request)};
    for (const Track &track : tracks(request)) {
        paths.append(track.path);
    }
    return paths;
}

CDExtractTask::CDExtractTask(TaskCompletionSink *queue, const QString &launchPath, Request request,
                             std::unique_ptr<UnmountedDisc> disc)
    : OutputTask(queue, {})
    , m_request(std::move(request))
    , m_launchPath(launchPath)
    , m_range(CdTracks::range(m_request.trackString).value_or(CdTracks::Range()))
    , m_disc(std::move(disc))
{
    const QStringList halves = m_request.trackString.split(u'+');
    setTitle(tr("CD Tracks %1 - %2").arg(halves.value(0), halves.value(1)));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

CDExtractTask::~CDExtractTask() = default;

void CDExtractTask::make(StagedOutputs &outputs)
{
    ToolCatalog::requireLaunchable(m_launchPath); // without it, the disc stays with the desktop
    if (m_disc) {
        m_disc->takeOff();
    }
    for (const Track &track : tracks(m_request)) {
        outputs.add(track.path, track.toolName);
    }
    const QString log = outputs.add(logPath(m_request));
    const QString staging = outputs.stagingFor(m_request.outputFolder);
    showTrack();
    runTool(
        m_launchPath, arguments(m_request), [this](const QString &piece) { processTaskOutput(piece); },
        staging);
    showStatus(tr("Renaming CD Tracks"));
    if (m_range.first == m_range.last) {
        // Tools number a single file as well when they are asked for one file a track.
        QFile::rename(staging + u'/' + toolName(m_range.first), staging + u'/' + oneFile);
    }
    if (error()) {
        keepWholeTracks(outputs);
    }
    showStatus(tr("Writing Log File"));
    writeLog(log);
}

void CDExtractTask::keepWholeTracks(StagedOutputs &outputs)
{
    int track = 0;
    for (const Track &each : tracks(m_request)) {
        const bool isWhole = !m_request.oneTrack && track++ < m_tracksDone;
        if (!isWhole) {
            outputs.withdraw(each.path);
        }
    }
    setError(false);
    failAfterwards(tr("not all tracks could be read"));
}

void CDExtractTask::showTrack()
{
    setTextFieldString(QStringLiteral("%1: %2").arg(title(), trackName()));
    setTopTextFieldString(trackName());
    publish(&KruvTask::setCombinedStatus);
}

QString CDExtractTask::trackName() const
{
    const int track = m_range.first + m_currentFileIndex;
    const QString file = fileNameFor(m_request, track);
    return file.isEmpty() ? QStringLiteral("Track %1").arg(track) : PathNames::nameWithoutExtension(file);
}

void CDExtractTask::processTaskOutput(const QString &text)
{
    if (m_logOutput.size() < KruvTaskResults::maxTextLength) {
        m_logOutput += text;
    }
    appendResults(CdOutput::stripPercent(text));
    for (const QString &percentage : CdOutput::percentages(text)) {
        setTopTextFieldString(tr("Extracting CD Track: %1%").arg(percentage));
        setProgressIndicatorValue(ToolOutput::leadingNumber(percentage));
        publish(&KruvTask::updateStatus);
    }
    const int ended = m_trackEnds.count(text);
    if (ended > 0) {
        m_tracksDone += ended;
        m_currentFileIndex = std::min(m_tracksDone, m_range.last - m_range.first);
        showTrack();
    }
}

void CDExtractTask::writeLog(const QString &path)
{
    const QString version = QStringLiteral("%1 (build %2)").arg(shortVersion(), buildNumber());
    const QString problem =
        TextFile::write(path, QStringLiteral("Kruv %1\n%2").arg(version, CdOutput::logText(m_logOutput)));
    if (!problem.isEmpty()) {
        fail(tr("The log %1 could not be written: %2.").arg(logPath(m_request), problem));
    }
}

void CDExtractTask::giveDiscBack()
{
    MainThread::post([disc = std::shared_ptr<UnmountedDisc>(std::move(m_disc))] {});
}

void CDExtractTask::stopTask()
{
    giveDiscBack();
    OutputTask::stopTask();
}

} // namespace kruv
