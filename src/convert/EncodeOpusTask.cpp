// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/EncodeOpusTask.h"

#include "convert/LossyWavSources.h"
#include "formats/LossyCommandLine.h"
#include "formats/LossyOutput.h"
#include "tags/TagsObject.h"
#include "tasks/ToolOutput.h"

namespace kruv {

namespace {

const char *const starting = "Encoding to Opus";
const char *const encoding = "Encoding To Opus";

const TranscodeTask::Recipe recipe{
    .firstStatus = starting,
    .wavSources = LossyWavSources::opus,
    .extension = "opus",
    .encoder = {},
    .taggedSources = {},
};

} // namespace

EncodeOpusTask::EncodeOpusTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                               const QString &outputPath, std::int32_t bitRate, double frameSize)
    : LossyTask(queue, fileName, outputPath, recipe)
    , m_type(type)
    , m_bitRate(bitRate)
    , m_frameSize(frameSize)
{
}

void EncodeOpusTask::doStartTask()
{
    showStatus(QString::fromLatin1(starting));
    m_tags = readTags({{u"FLAC", "Copying FLAC Tags"}, {u"M4A", "Copying M4A Tags"}});
    LossyTask::doStartTask();
}

void EncodeOpusTask::encode(const QString &input)
{
    showStatus(QString::fromLatin1(encoding));
    LossyCommandLine::OpusRequest request{
        .type = m_type, .bitRate = m_bitRate, .frameSize = m_frameSize, .title = {}, .artist = {}};
    if (m_tags) {
        request.title = m_tags->titleText();
        request.artist = m_tags->artistText();
    }
    const QStringList arguments = LossyCommandLine::opusenc(request, input, outFile());
    appendResults(QStringLiteral("opusenc\n") + arguments.join(u'\n') + u'\n');
    runEncoder("opusenc", arguments, [this](const QString &piece) { processTaskOutput(piece); });
}

void EncodeOpusTask::processTaskOutput(const QString &piece)
{
    if (const auto percentage = LossyOutput::opusenc(piece)) {
        showProgress(QString::fromLatin1(encoding), *percentage);
    }
    appendResults(ToolOutput::withoutBackspaces(piece).toString());
}

} // namespace kruv
