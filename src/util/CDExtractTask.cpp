// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/CDExtractTask.h"

#include "base/PathNames.h"
#include "base/TextFile.h"
#include "base/Version.h"
#include "platform/MainThread.h"
#include "platform/UnmountedDisc.h"
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

QString logName(const QString &discName)
{
    return discName + QStringLiteral(".log.txt");
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

QStringList CDExtractTask::outputs(const Request &request)
{
    const QString folder = request.outputFolder + u'/';
    QStringList paths{folder + logName(request.discName)};
    const auto range = CdTracks::range(request.trackString).value_or(CdTracks::Range());
    if (request.oneTrack || range.first == range.last) {
        paths.append(folder + oneFile);
    }
    for (int track = range.first; track <= range.last && !request.oneTrack; ++track) {
        paths.append(folder + toolName(track));
    }
    return paths;
}

CDExtractTask::CDExtractTask(TaskCompletionSink *queue, const QString &launchPath, Request request,
                             std::unique_ptr<UnmountedDisc> disc)
    : KruvAsyncNSTask(queue, launchPath, arguments(request))
    , m_request(std::move(request))
    , m_range(CdTracks::range(m_request.trackString).value_or(CdTracks::Range()))
    , m_disc(std::move(disc))
{
    const QStringList halves = m_request.trackString.split(u'+');
    setTitle(QStringLiteral("CD Tracks %1 - %2").arg(halves.value(0), halves.value(1)));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
    setDirectory(m_request.outputFolder);
}

CDExtractTask::~CDExtractTask() = default;

void CDExtractTask::startTask()
{
    KruvAsyncNSTask::startTask();
    showTrack();
}

void CDExtractTask::prepare()
{
    if (m_disc) {
        m_disc->takeOff();
    }
}

void CDExtractTask::showTrack()
{
    setTextFieldString(QStringLiteral("%1: %2").arg(title(), trackName()));
    setTopTextFieldString(trackName());
    publish(&KruvTask::setCombinedStatus);
}

void CDExtractTask::showStatus(const QString &status)
{
    setTopTextFieldString(status);
    publish(&KruvTask::setTopTextFieldValue);
}

QString CDExtractTask::fileNameFor(int track) const
{
    const auto named = std::ranges::find(m_request.fileNames, track,
                                         [](const QString &file) { return CdTracks::number(file); });
    return named == m_request.fileNames.cend() ? QString() : *named;
}

QString CDExtractTask::trackName() const
{
    const int track = m_range.first + m_currentFileIndex;
    const QString file = fileNameFor(track);
    return file.isEmpty() ? QStringLiteral("Track %1").arg(track) : PathNames::nameWithoutExtension(file);
}

void CDExtractTask::processTaskOutput(const QString &text)
{
    if (m_logOutput.size() < KruvTaskResults::maxTextLength) {
        m_logOutput += text;
    }
    appendResults(CdOutput::stripPercent(text));
    for (const QString &percentage : CdOutput::percentages(text)) {
        setTopTextFieldString(QStringLiteral("Extracting CD Track: %1%").arg(percentage));
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

void CDExtractTask::rename(const QString &toolName, int track)
{
    const QString source = m_request.outputFolder + u'/' + toolName;
    const QString file = fileNameFor(track);
    if (file.isEmpty()) {
        return;
    }
    const QString target = PathNames::outputPath(m_request.outputFolder, file, QStringLiteral("wav"));
    if (target != source && !QFile::rename(source, target)) {
        appendResults(QStringLiteral("\n%1 keeps its name: it could not be renamed to %2.")
                          .arg(source, PathNames::lastPathComponent(target)));
    }
}

bool CDExtractTask::isNewer(const QString &one, const QString &other) const
{
    const QFileInfo first(m_request.outputFolder + u'/' + one);
    const QFileInfo second(m_request.outputFolder + u'/' + other);
    return first.exists() && (!second.exists() || first.lastModified() >= second.lastModified());
}

void CDExtractTask::renameTracks()
{
    // The track at which the tool failed or was ended is not whole: it keeps the tool's name.
    const bool allDone = !error() && !cancelled();
    const int last = allDone ? m_range.last : std::min(m_range.last, m_range.first + m_tracksDone - 1);
    const bool oneOnly = m_range.last == m_range.first;
    // Tools number a single file as well when they are asked for one file a track.
    if (oneOnly && last == m_range.last && isNewer(oneFile, toolName(m_range.first))) {
        return rename(oneFile, m_range.first);
    }
    for (int track = m_range.first; track <= last && !m_request.oneTrack; ++track) {
        rename(toolName(track), track);
    }
}

void CDExtractTask::writeLog()
{
    const QString path = m_request.outputFolder + u'/' + logName(m_request.discName);
    const QString version = QStringLiteral("%1 (build %2)").arg(shortVersion(), buildNumber());
    if (!TextFile::write(path, QStringLiteral("Kruv %1\n%2").arg(version, CdOutput::logText(m_logOutput)))) {
        fail(QStringLiteral("The log %1 could not be written.").arg(path));
    }
}

void CDExtractTask::cleanup()
{
    showStatus(QStringLiteral("Renaming CD Tracks"));
    renameTracks();
    showStatus(QStringLiteral("Writing Log File"));
    writeLog();
    giveDiscBack();
}

void CDExtractTask::giveDiscBack()
{
    MainThread::post([disc = std::shared_ptr<UnmountedDisc>(std::move(m_disc))] {});
}

void CDExtractTask::neverRan()
{
    KruvAsyncNSTask::neverRan();
    giveDiscBack();
}

void CDExtractTask::finalCleanup()
{
    if (!error()) {
        results()->setHasResults(false);
    }
}

} // namespace kruv
