// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/SoxTask.h"

#include "base/PathNames.h"
#include "formats/TagFormats.h"
#include "platform/Resources.h"
#include "tags/TagsObject.h"
#include "tasks/OutputWatch.h"
#include "util/FormatSummary.h"

#include <QFile>
#include <QLoggingCategory>

#include <cmath>

namespace kruv {

namespace {
Q_LOGGING_CATEGORY(soxLog, "kruv.util", QtWarningMsg)
} // namespace

SoxTask::SoxTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputFolder,
                 Recipe recipe, std::shared_ptr<KruvTaskResults> results)
    : StagedTask(queue, fileName)
    , m_outputFolder(outputFolder)
    , m_recipe(std::move(recipe))
{
    setResults(std::move(results));
}

SoxTask::~SoxTask() = default;

QString SoxTask::outputFor(const QString &source, const QString &folder, const QString &suffix)
{
    return folder + u'/' + PathNames::nameWithoutExtension(source) + suffix + u'.' +
           PathNames::extension(source);
}

QString SoxTask::outputPath() const
{
    return outputFor(fileName(), m_outputFolder, m_recipe.suffix);
}

std::shared_ptr<TagsObject> SoxTask::readTags()
{
    const QString type = PathNames::fileType(fileName());
    if (!m_recipe.taggedTypes.contains(type)) {
        return nullptr;
    }
    showStatus(type == u"FLAC" ? QStringLiteral("Copying FLAC Tags") : QStringLiteral("Copying Aiff Tags"));
    return TagFormats::read(fileName());
}

void SoxTask::writeTags(const TagsObject &tags)
{
    if (!TagFormats::write(PathNames::fileType(fileName()), outputPath(), tags, false)) {
        fail(QStringLiteral("The tags of %1 could not be written to %2.").arg(fileName(), outputPath()));
    }
}

void SoxTask::doStartTask()
{
    showStatus(m_recipe.status);
    if (OutputWatch::isSameFile(fileName(), outputPath())) {
        fail(QStringLiteral("%1 leads to the source, which would be written over.").arg(outputPath()));
        return;
    }
    const auto tags = readTags();
    const OutputWatch output(outputPath());
    const QStringList arguments{QStringLiteral("-S"), fileName(), outputPath()};
    runTool(toolPath(QStringLiteral("sox")), arguments + m_recipe.effect,
            [this](const QString &piece) { processTaskOutput(piece); });
    qCInfo(soxLog, "done %s", qUtf8Printable(fileName()));
    if (mayGoOn()) {
        checkLength();
    }
    if (!mayGoOn() && output.written()) {
        QFile::remove(outputPath()); // it plays, and looks whole
    }
    if (mayGoOn() && tags && output.written()) {
        writeTags(*tags);
    }
    appendResults(QStringLiteral("\n\n"));
}

void SoxTask::processTaskOutput(const QString &piece)
{
    for (const QString &message : m_messages.read(piece)) {
        appendResults(message + u'\n');
    }
    const QString text = SoxOutput::percentageText(piece);
    bool isNumber = false;
    const double percentage = text.toDouble(&isNumber);
    if (isNumber) {
        showProgress(m_recipe.progress + QStringLiteral(": %1%").arg(percentage, 0, 'f', 6), percentage);
    } else if (!text.isEmpty()) {
        qCWarning(soxLog, "%s", qUtf8Printable(m_recipe.failure.arg(piece)));
    }
    if (SoxOutput::isDone(piece) && !m_saidDone) {
        m_saidDone = true;
        appendResults(title() + QStringLiteral("  - Done\n"));
    }
}

void SoxTask::checkLength()
{
    if (!m_messages.shortEnd().isEmpty()) {
        fail(QStringLiteral("%1 was removed; it was not complete: %2")
                 .arg(outputPath(), m_messages.shortEnd()));
        return;
    }
    constexpr double rounding = 2.0; // frames
    const auto source = formatSummary(fileName());
    const auto output = formatSummary(outputPath());
    const double expected = m_recipe.sampleRate > 0 ? source.time() * m_recipe.sampleRate
                                                    : static_cast<double>(source.totalSamples);
    const double missing = std::abs(expected - static_cast<double>(output.totalSamples));
    if (source.totalSamples > 0 && missing > rounding) {
        fail(QStringLiteral("%1 was removed; it was not complete: it had %2 frames in place of %3.")
                 .arg(outputPath())
                 .arg(output.totalSamples)
                 .arg(expected, 0, 'f', 0));
    }
}

} // namespace kruv
