// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/DecodeFlacTask.h"

#include "base/PathNames.h"
#include "formats/flac/FlacOutput.h"
#include "tags/TagLibTagsHelper.h"
#include "tasks/OriginalFile.h"
#include "tasks/ToolOutput.h"

namespace kruv {

DecodeFlacTask::DecodeFlacTask(const QString &fileName, TaskCompletionSink *queue, const QString &launchPath,
                               const QStringList &arguments)
    : KruvAsyncNSTask(queue, launchPath, arguments)
    , m_fileName(fileName)
{
    setTitle(PathNames::lastPathComponent(fileName));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void DecodeFlacTask::startTask()
{
    m_output = OutputWatch(outputPath());
    KruvAsyncNSTask::startTask();
}

void DecodeFlacTask::processTaskOutput(const QString &text)
{
    const QStringView piece = ToolOutput::cleaned(text);
    if (const auto percentage = FlacOutput::decodeProgress(piece, title())) {
        setTopTextFieldString(QStringLiteral("Decoding Flac: %1%").arg(*percentage, 0, 'f', 6));
        setProgressIndicatorValue(*percentage);
    }
    m_damageReported = m_damageReported || FlacOutput::reportsDamage(piece, title());
    appendResults(piece.toString());
    setTextFieldString(title());
    publish(&KruvTask::setCombinedStatus);
}

void DecodeFlacTask::copyFlacTags()
{
    TagLibTagsHelper tagsHelper;
    const auto tags = tagsHelper.tagsForFlacFile(m_fileName);
    setTopTextFieldString(QStringLiteral("Copying Flac Tags"));
    publish(&KruvTask::setTopTextFieldValue);
    if (!tagsHelper.writeTagsForAIFFFile(outputPath(), *tags)) {
        fail(QStringLiteral("The tags of %1 could not be written to %2.").arg(m_fileName, outputPath()));
    }
}

void DecodeFlacTask::cleanup()
{
    // A file that was there before and that a failed run never touched keeps its own tags.
    if (PathNames::fileType(outputPath()) == u"AIFF" && PathNames::fileType(m_fileName) == u"FLAC" &&
        m_output.written()) {
        copyFlacTags();
    }
    if (m_damageReported && deleteOriginal() && !error() && !cancelled()) {
        OriginalFile::keep(*this, m_fileName, QStringLiteral("it is damaged and was decoded through errors"));
    }
    OriginalFile::deleteAfterSuccess(*this, m_fileName, m_output);
    if (!error()) {
        results()->setHasResults(false);
    }
}

} // namespace kruv
