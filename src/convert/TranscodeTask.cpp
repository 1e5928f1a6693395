// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/TranscodeTask.h"

#include "base/PathNames.h"
#include "convert/TagCopy.h"
#include "tasks/OriginalFile.h"
#include "tasks/TemporaryFile.h"

#include <QLoggingCategory>

#include <algorithm>
#include <exception>

namespace kruv {

namespace {
Q_LOGGING_CATEGORY(transcodeLog, "kruv.lossless", QtWarningMsg)
}

TranscodeTask::TranscodeTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
                             const Recipe &recipe, Options options)
    : CodecTask(queue, fileName, folder, QString::fromLatin1(recipe.extension))
    , m_recipe(recipe)
    , m_options(std::move(options))
{
}

void TranscodeTask::doStartTask()
{
    watchOutput();
    showStatus(QString::fromUtf8(m_recipe.firstStatus));
    makeOutput();
    if (mayGoOn()) {
        finish();
    }
    deleteSource(output());
}

void TranscodeTask::makeOutput()
{
    const QString fileType = PathNames::fileType(fileName());
    const auto source = std::ranges::find(m_recipe.wavSources, fileType, &WavSource::fileType);
    if (source != m_recipe.wavSources.end()) {
        TemporaryFile wav(folder(), QStringLiteral("wav"));
        if (makeWav(*source, wav.path())) {
            encode(wav.path());
        }
        if (cancelled() && m_recipe.keepsWavWhenCancelled) {
            wav.keep();
        }
    } else if (m_recipe.readsOtherSources || fileType == u"WAV") {
        encode(fileName());
    } else {
        fail(QStringLiteral("Unknown file extension %1").arg(fileType));
    }
}

bool TranscodeTask::makeWav(const WavSource &source, const QString &wav)
{
    if (source.status) {
        showStatus(QString::fromUtf8(source.status));
    }
    return source.tool ? runStep(*source.tool, {.input = fileName(), .output = wav})
                       : convert(fileName(), wav, FormatType::LinearPcm, FileType::Wave);
}

void TranscodeTask::encode(const QString &input)
{
    runStep(m_recipe.encoder,
            {.input = input, .output = outFile(), .level = m_options.level, .verify = m_options.verify});
}

void TranscodeTask::finish()
{
    const QString fileType = PathNames::fileType(fileName());
    const auto source = std::ranges::find(m_recipe.taggedSources, fileType, &TaggedSource::fileType);
    const bool isTagged = source != m_recipe.taggedSources.end();
    if (!isTagged && !m_recipe.tagsOthers) {
        return;
    }
    if (isTagged && source->status) {
        showStatus(QString::fromUtf8(source->status));
    }
    try {
        const auto record = isTagged ? TagCopy::read(fileName()) : std::make_shared<TagsObject>();
        TagCopy::write(outFile(), *record);
    } catch (const std::exception &failure) {
        tagsNotCopied(QString::fromUtf8(failure.what()));
    }
}

void TranscodeTask::tagsNotCopied(const QString &reason)
{
    qCWarning(transcodeLog, "Error writing tags for %s: %s", qUtf8Printable(outFile()),
              qUtf8Printable(reason));
    if (m_recipe.tagFailureFails) {
        fail(QStringLiteral("Error writing tags to file:\n%1").arg(reason));
        return;
    }
    appendResults(QStringLiteral("Error writing tags to file %1:\n%2\n").arg(outFile(), reason));
    if (deleteOriginal() && mayGoOn()) {
        OriginalFile::keep(*this, fileName(), QStringLiteral("its tags could not be copied"));
    }
}

} // namespace kruv
