// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/EncodeFlacTask.h"

#include "base/PathNames.h"
#include "formats/flac/FlacOutput.h"
#include "tags/TagLibTagsHelper.h"
#include "tasks/OriginalFile.h"
#include "tasks/ToolOutput.h"

#include <QFile>

namespace kruv {

EncodeFlacTask::EncodeFlacTask(const QString &fileName, TaskCompletionSink *queue, const QString &launchPath,
                               const QStringList &arguments, std::shared_ptr<KruvTaskResults> results)
    : KruvAsyncNSTask(queue, launchPath, arguments)
    , m_fileName(fileName)
{
    setTitle(PathNames::lastPathComponent(fileName));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
    setResults(std::move(results));
}

void EncodeFlacTask::startTask()
{
    m_output = OutputWatch(outputPath());
    m_mayReplace = arguments().contains(QStringLiteral("-f"));
    m_overItself = m_fileName == outputPath() || OutputWatch::isSameFile(m_fileName, outputPath());
    KruvAsyncNSTask::startTask();
}

void EncodeFlacTask::processTaskOutput(const QString &text)
{
    const QStringView piece = ToolOutput::cleaned(text);
    const auto progress = FlacOutput::encodeProgress(piece, title());
    constexpr double step = 1.0;
    if (!progress.percentageText.isEmpty() && progress.percentage >= m_lastPercentageDisplayed + step) {
        setTopTextFieldString(
            QStringLiteral("Encoding to Flac: %1% %2").arg(progress.percentageText, progress.ratioText));
        setProgressIndicatorValue(progress.percentage);
        setTextFieldString(title());
        publish(&KruvTask::setCombinedStatus);
        m_lastPercentageDisplayed = progress.percentage;
    }
    m_sourceIsShort = m_sourceIsShort || FlacOutput::reportsShortSource(piece);
    appendResults(piece.toString());
}

void EncodeFlacTask::copyAiffTags()
{
    setTopTextFieldString(QStringLiteral("Reading AIFF Tags"));
    publish(&KruvTask::setTopTextFieldValue);
    TagLibTagsHelper tagsHelper;
    const auto tags = tagsHelper.tagsForAIFFFile(m_fileName);
    setTopTextFieldString(QStringLiteral("Writing Flac Tags"));
    publish(&KruvTask::setTopTextFieldValue);
    if (!tagsHelper.writeTagsForFLACFile(outputPath(), *tags, true)) {
        fail(QStringLiteral("The tags of %1 could not be written to %2.").arg(m_fileName, outputPath()));
    }
}

void EncodeFlacTask::cleanup()
{
    if (error() && m_output.written() && !m_overItself && (m_mayReplace || !m_output.existedBefore())) {
        QFile::remove(outputPath()); // half a file that looks whole
        return;
    }
    const QString sourceType = PathNames::fileType(m_fileName);
    const bool sourceIsAiff = sourceType == u"AIFF" || sourceType == u"AIF";
    // A file that was there before and that a failed run never touched keeps its own tags.
    if (sourceIsAiff && m_output.written()) {
        copyAiffTags();
    }
    if (m_sourceIsShort) {
        fail(QStringLiteral("%1 ends before the audio that it announces; %2 holds only what was there.")
                 .arg(m_fileName, outputPath()));
    }
    if (!m_overItself) {
        OriginalFile::deleteAfterSuccess(*this, m_fileName, m_output);
    }
}

void EncodeFlacTask::finalCleanup()
{
    if (!error()) {
        results()->setHasResults(false);
    }
}

} // namespace kruv
