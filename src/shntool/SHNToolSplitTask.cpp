// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolSplitTask.h"

#include "base/PathNames.h"
#include "formats/SetProof.h"
#include "shntool/SHNToolArguments.h"
#include "shntool/SplitPositions.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <stdexcept>

namespace kruv {

SHNToolSplitTask::SHNToolSplitTask(TaskCompletionSink *queue, Request given, const QString &splitPoints)
    : SHNToolOutputTask(queue, std::move(given),
                        {.text = QT_TRANSLATE_NOOP("kruv::SHNToolDisplay", "Splitting: %1%"),
                         .unreadable = QT_TRANSLATE_NOOP("kruv::SHNToolDisplay", "Splitting: ? %")})
    , m_splitPoints(splitPoints)
{
    setTitles(PathNames::lastPathComponent(inputPath()));
}

QStringList SHNToolSplitTask::knownTracks() const
{
    QStringList tracks = m_trackTitleMap.keys();
    const QString first = QStringLiteral("split-track01.") + request().format;
    if (!tracks.contains(first)) {
        tracks.prepend(first);
    }
    return tracks;
}

QString SHNToolSplitTask::pathOf(const QString &track) const
{
    return request().folder + u'/' + m_trackTitleMap.value(track, track);
}

QStringList SHNToolSplitTask::outputs() const
{
    QStringList paths;
    for (const QString &track : knownTracks()) {
        paths.append(pathOf(track));
    }
    return paths;
}

void SHNToolSplitTask::make(StagedOutputs &outputs)
{
    for (const QString &track : knownTracks()) {
        outputs.add(pathOf(track), track);
    }
    const QString staging = outputs.stagingFor(request().folder);
    runShntool(SHNToolArguments::split(m_splitPoints, staging, request().format, inputPath()), staging,
               request().folder);
    if (mayGoOn()) {
        takeTracks(outputs, staging);
    }
}

/// How many tracks there are shows only now: the points may lie behind the end.
void SHNToolSplitTask::takeTracks(StagedOutputs &outputs, const QString &staging)
{
    QStringList tracks =
        QDir(staging).entryList({QStringLiteral("split-track*.") + request().format}, QDir::Files);
    if (tracks.isEmpty()) {
        return; // what was announced is missed
    }
    std::ranges::stable_sort(tracks, {}, &QString::size); // the hundredth behind the tenth
    m_tracks = tracks;
    for (const QString &known : knownTracks()) {
        if (!tracks.removeOne(known)) {
            outputs.withdraw(pathOf(known));
        }
    }
    for (const QString &track : std::as_const(tracks)) {
        outputs.add(pathOf(track), track);
    }
}

ProofNote SHNToolSplitTask::prove(const StagedOutputs &outputs)
{
    QStringList tracks;
    for (const QString &track : m_tracks) {
        tracks.append(outputs.stagedPath(pathOf(track)));
    }
    SetProof proof(Proof::Change::None, [this](double percent) { return showProof(percent); });
    if (const auto finding = proof.show(request().files, tracks)) {
        requireCutsAtPoints(*finding);
    }
    return proof.note();
}

void SHNToolSplitTask::requireCutsAtPoints(const Proof::Finding &finding) const
{
    QFile points(m_splitPoints);
    if (!points.open(QIODevice::ReadOnly)) {
        throw std::runtime_error(tr("%1 can't be read any more.").arg(m_splitPoints).toStdString());
    }
    std::vector<std::int64_t> cuts;
    std::int64_t end = 0;
    for (const std::int64_t length : finding.outputLengths) {
        cuts.push_back(end += length);
    }
    cuts.pop_back(); // the end of the whole
    if (!SplitPositions::fit(cuts, points.readAll(), finding.format)) {
        throw std::runtime_error(
            tr("The tracks are not cut where %1 says.").arg(m_splitPoints).toStdString());
    }
}

} // namespace kruv
