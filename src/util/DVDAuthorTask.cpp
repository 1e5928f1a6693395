// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/DVDAuthorTask.h"

#include "base/PathNames.h"
#include "base/TextFile.h"
#include "platform/Resources.h"
#include "tasks/ToolOutput.h"

namespace kruv {

namespace {

/// The tree is written once and read once: each is half of the way.
constexpr double half = 50.0;

QString treeIn(const QString &folder)
{
    return folder + QStringLiteral("/DVD-AUDIO");
}

} // namespace

DVDAuthorTask::DVDAuthorTask(TaskCompletionSink *queue, const QStringList &fileNames,
                             const QString &outputPath)
    : AudioOutputTask(queue, {})
    , m_fileNames(fileNames)
    , m_outputPath(outputPath)
{
    setTitle(tr("DVD Audio Disc"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

QStringList DVDAuthorTask::authorArguments(const QStringList &fileNames, const QString &folder)
{
    return QStringList{QStringLiteral("-l"), logIn(folder),        QStringLiteral("-P0"),
                       QStringLiteral("-S"), QStringLiteral("-f"), QStringLiteral("-o"),
                       treeIn(folder),       QStringLiteral("-g")} +
           fileNames;
}

QStringList DVDAuthorTask::imageArguments(const QString &folder)
{
    return {QStringLiteral("-o"), imageIn(folder), QStringLiteral("-dvd-audio"), treeIn(folder)};
}

void DVDAuthorTask::make(StagedOutputs &outputs)
{
    outputs.add(imageIn(m_outputPath));
    const QString log = outputs.add(logIn(m_outputPath));
    const QString staging = outputs.stagingFor(m_outputPath);
    showStatus(tr("Authoring AUDIO_TS directory"));
    authorDisc(staging);
    if (mayGoOn()) {
        showStatus(tr("Making .ISO Image"));
        makeImage(staging);
    }
    if (error()) {
        appendResults(u'\n' + TextFile::read(log).value_or(QString()));
    }
}

void DVDAuthorTask::authorDisc(const QString &staging)
{
    runTool(toolPath(QStringLiteral("dvda")), authorArguments(m_fileNames, staging),
            [this](const QString &piece) { processDVDATaskOutput(piece); });
}

void DVDAuthorTask::processDVDATaskOutput(const QString &piece)
{
    constexpr QStringView marker = u"[Kruv]  Processing ";
    constexpr QStringView separator = u"::";
    const QString text = ToolOutput::withoutBackspaces(piece).toString();
    const qsizetype found = text.lastIndexOf(marker);
    const QString rest = found < 0 ? QString() : text.mid(found + marker.size());
    const qsizetype end = rest.indexOf(separator);
    if (end < 0) {
        appendResults(text);
        return;
    }
    const QString path = rest.mid(end + separator.size()).section(u'\n', 0, 0);
    const int number = rest.left(end).toInt();
    setTopTextFieldString(tr("Processing: %1").arg(PathNames::lastPathComponent(path)));
    setProgressIndicatorValue(half * (number - 1) / static_cast<double>(m_fileNames.size()));
    publish(&KruvTask::updateStatus);
}

void DVDAuthorTask::makeImage(const QString &staging)
{
    runTool(toolPath(QStringLiteral("mkisofs")), imageArguments(staging),
            [this](const QString &piece) { processImageTaskOutput(piece); });
}

void DVDAuthorTask::processImageTaskOutput(const QString &piece)
{
    const qsizetype percent = piece.indexOf(QStringLiteral("% done"));
    if (percent < 0) {
        appendResults(piece);
        return;
    }
    const QString line = piece.left(percent).section(u'\n', -1);
    setProgressIndicatorValue(half + ToolOutput::leadingNumber(line) / 2);
    publish(&KruvTask::setProgressIndicatorValueInGui);
}

} // namespace kruv
