// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/EncodeMP3Task.h"

#include "audio/CoreAudioHelper.h"
#include "base/Preferences.h"
#include "formats/LossyOutput.h"
#include "formats/StatedFormat.h"
#include "tags/TagLibTagsHelper.h"
#include "tasks/TaskCompletionSink.h"
#include "tasks/TemporaryFile.h"
#include "tasks/ToolOutput.h"

namespace kruv {

namespace {

const char *const encoding = "Encoding to LAME MP3";

constexpr TranscodeTask::WavSource wavSources[] = {{u"M4A", "Decoding ALAC to Wav", nullptr}};
const TranscodeTask::Recipe recipe{
    .firstStatus = encoding,
    .wavSources = wavSources,
    .extension = "mp3",
    .encoder = {},
    .taggedSources = {},
    .readsOtherSources = true,
};

} // namespace

EncodeMP3Task::EncodeMP3Task(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                             const QString &outputPath, std::int32_t level)
    : LossyTask(queue, fileName, outputPath, recipe)
    , m_type(type)
    , m_level(level)
{
}

void EncodeMP3Task::doStartTask()
{
    showStatus(QString::fromLatin1(encoding));
    m_tags = readTags({{u"FLAC", "Copying FLAC Tags"}, {u"M4A", "Copying M4A Tags"}});
    constexpr int mostChannels = 2;
    if (const int channels = statedFormat(fileName()).channels; channels > mostChannels) {
        fail(QStringLiteral("%1 has %2 channels; MP3 holds at most two.\n").arg(fileName()).arg(channels));
        return;
    }
    LossyTask::doStartTask();
}

void EncodeMP3Task::encode(const QString &input)
{
    if (fileType() == u"WAV") {
        doEncodeCallFromWav(input);
    } else if ((fileType() == u"AIF" || fileType() == u"AIFF") && CoreAudioHelper::is24BitAIFF(input)) {
        showStatus(QStringLiteral("24 bit Aiff - translating"));
        const TemporaryFile wav(folder(), QStringLiteral("wav"));
        if (convert(input, wav.path(), FormatType::LinearPcm, FileType::Wave)) {
            doEncodeCall(wav.path());
        }
    } else {
        doEncodeCall(input);
    }
}

LossyCommandLine::Mp3Request EncodeMP3Task::request() const
{
    const Preferences &preferences = queue()->preferences();
    return {.type = m_type,
            .level = m_level,
            .jointStereo = preferences.integer(QStringLiteral("lameStereoOption")) != 0,
            .qValue = preferences.integer(QStringLiteral("lameQValue"))};
}

void EncodeMP3Task::doEncodeCallFromWav(const QString &input)
{
    runEncoder("lame", LossyCommandLine::lame(request(), input, outFile()),
               [this](const QString &piece) { processTaskOutputFromWav(piece); });
}

void EncodeMP3Task::doEncodeCall(const QString &input)
{
    showStatus(QString::fromLatin1(encoding));
    runEncoder("shntool", LossyCommandLine::shntoolToLame(request(), input, folder(), outFile()),
               [this](const QString &piece) { processTaskOutput(piece); });
}

void EncodeMP3Task::processTaskOutput(const QString &piece)
{
    const QStringView text = ToolOutput::withoutBackspaces(piece);
    if (text.contains(u"Converting")) {
        appendResults(text.left(text.indexOf(u": ")).toString());
    }
    if (text.contains(u"ERROR") || text.contains(u"OK")) {
        appendResults(text.toString());
    }
    showPercentage(LossyOutput::shntool(text));
}

void EncodeMP3Task::processTaskOutputFromWav(const QString &piece)
{
    showPercentage(LossyOutput::lame(piece));
    appendResults(ToolOutput::withoutBackspaces(piece).toString());
}

void EncodeMP3Task::showPercentage(std::optional<double> percentage)
{
    if (percentage) {
        showProgress(QStringLiteral("Encoding to MP3: %1%").arg(*percentage, 0, 'f', 6), *percentage);
    }
}

void EncodeMP3Task::finish()
{
    if (m_tags && !TagLibTagsHelper().writeTagsForMP3File(outFile(), *m_tags, false)) {
        fail(QStringLiteral("The tags could not be written to %1.\n").arg(outFile()));
    }
    LossyTask::finish();
}

} // namespace kruv
