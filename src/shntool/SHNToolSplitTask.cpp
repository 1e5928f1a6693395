// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolSplitTask.h"

#include "base/PathNames.h"
#include "shntool/SHNToolArguments.h"

#include <QDir>

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
    for (const QString &known : knownTracks()) {
        if (!tracks.removeOne(known)) {
            outputs.withdraw(pathOf(known));
        }
    }
    for (const QString &track : std::as_const(tracks)) {
        outputs.add(pathOf(track), track);
    }
}

} // namespace kruv
