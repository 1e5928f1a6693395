// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/SoxTask.h"

#include "audio/AudioFiles.h"
#include "audio/EncodeCoreAudioSync.h"
#include "audio/ExtAudioFileReader.h"
#include "audio/Proof.h"
#include "base/PathNames.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/TagFormats.h"
#include "platform/Resources.h"
#include "tags/TagsObject.h"
#include "util/FormatSummary.h"

#include <QFileInfo>
#include <QLoggingCategory>

#include <cmath>

namespace kruv {

namespace {
Q_LOGGING_CATEGORY(soxLog, "kruv.util", QtWarningMsg)
} // namespace

SoxTask::SoxTask(TaskCompletionSink *queue, const QString &fileName, const QString &outputFolder,
                 Recipe recipe, std::shared_ptr<KruvTaskResults> results)
    : AudioOutputTask(queue, fileName)
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
    const Format *format = Formats::ofType(PathNames::fileType(fileName()));
    if (!m_recipe.tagged.contains(format)) {
        return nullptr;
    }
    showStatus(format == &flacFormat ? tr("Copying FLAC Tags") : tr("Copying Aiff Tags"));
    return TagFormats::read(fileName());
}

QStringList SoxTask::arguments(const QString &source, const QString &output, const QStringList &effect)
{
    // Without --no-glob a name such as "Live [1].wav" stands for another file. Full paths are never taken for
    // options or for commands to run.
    return QStringList{QStringLiteral("-S"), QStringLiteral("--no-glob"),
                       QFileInfo(source).absoluteFilePath(), QFileInfo(output).absoluteFilePath()} +
           effect;
}

/// sox looks at no checksum, and takes a length that a header leaves open for none.
QString SoxTask::soxInput(StagedOutputs &outputs)
{
    const auto source = AudioFiles::open(fileName());
    if (source->dataFormat().formatType == FormatType::LinearPcm &&
        source->length() == ExtAudioFileReader::Length::Told) {
        return fileName();
    }
    QString wav = outputs.scratch(m_outputFolder, wavFormat.extension());
    EncodeCoreAudioSync(*this, fileName(), wav, FormatType::LinearPcm, FileType::Wave).doEncodeCall();
    return wav;
}

void SoxTask::make(StagedOutputs &outputs)
{
    showStatus(m_recipe.status);
    m_tags = readTags();
    const QString staged = outputs.add(outputPath());
    const QString input = soxInput(outputs);
    runTool(toolPath(QStringLiteral("sox")), arguments(input, staged, m_recipe.effect),
            [this](const QString &piece) { processTaskOutput(piece); });
    qCInfo(soxLog, "done %s", qUtf8Printable(fileName()));
    if (mayGoOn()) {
        checkLength(staged);
    }
    if (!mayGoOn()) {
        appendResults(QStringLiteral("\n\n"));
    }
}

void SoxTask::dress(StagedOutputs &outputs)
{
    const QString staged = outputs.stagedPath(outputPath());
    if (m_tags && !TagFormats::write(PathNames::fileType(fileName()), staged, *m_tags, false)) {
        fail(tr("The tags of %1 could not be written to %2.").arg(fileName(), outputPath()));
    }
}

/// Its samples are others on purpose, but the output has to be whole.
ProofNote SoxTask::prove(const StagedOutputs &outputs)
{
    Proof::sameLength(fileName(), outputs.stagedPath(outputPath()),
                      [this](double percent) { return showProof(percent); });
    return {.unproven = tr("its samples were changed on purpose")};
}

void SoxTask::committed(const StagedOutputs &)
{
    appendResults(tr("%1  - Done").arg(title()) + QStringLiteral("\n\n\n"));
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
        showProgress(m_recipe.progress.arg(percentage, 0, 'f', 6), percentage);
    } else if (!text.isEmpty()) {
        qCWarning(soxLog, "%s", qUtf8Printable(m_recipe.failure.arg(piece)));
    }
}

void SoxTask::checkLength(const QString &output)
{
    if (!m_messages.shortEnd().isEmpty()) {
        fail(tr("%1 was not kept, for it is not complete: %2.").arg(outputPath(), m_messages.shortEnd()));
        return;
    }
    constexpr double rounding = 2.0; // frames
    const auto source = formatSummary(fileName());
    const auto made = formatSummary(output);
    const double expected = m_recipe.sampleRate > 0 ? source.time() * m_recipe.sampleRate
                                                    : static_cast<double>(source.totalSamples);
    const double missing = std::abs(expected - static_cast<double>(made.totalSamples));
    if (source.totalSamples > 0 && missing > rounding) {
        fail(tr("%1 was not kept, for it is not complete: it has %2 frames in place of %3.")
                 .arg(outputPath(), QString::number(made.totalSamples), QString::number(expected, 'f', 0)));
    }
}

} // namespace kruv
