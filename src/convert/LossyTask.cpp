// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/LossyTask.h"

#include "audio/CoreAudioHelper.h"
#include "base/PathNames.h"
#include "convert/TagCopy.h"
#include "formats/StatedFormat.h"
#include "platform/Resources.h"
#include "tasks/OriginalFile.h"

#include <QFile>

#include <algorithm>

namespace kruv {

LossyTask::LossyTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
                     const Recipe &recipe)
    : TranscodeTask(queue, fileName, folder, recipe, {})
    , m_fileType(PathNames::fileType(fileName))
{
}

void LossyTask::doStartTask()
{
    if (!deletesSourceType()) {
        setDeleteOriginal(false);
    }
    if (writtenFile() == outFile() && QFile::exists(outFile())) {
        fail(QStringLiteral("The output file %1 already exists.\n").arg(outFile()));
        return;
    }
    // The encoders take any bytes for samples.
    if (m_fileType == u"WAV" && CoreAudioHelper::getFormatInfo(fileName()).sampleRate == 0) {
        fail(QStringLiteral("%1 is not a WAV file, or holds a kind of audio that can't be read.")
                 .arg(fileName()));
        return;
    }
    if (isCutShort(fileName())) {
        fail(QStringLiteral("%1 has less audio than its header states: it was not copied whole.\n")
                 .arg(fileName()));
        return;
    }
    TranscodeTask::doStartTask();
}

bool LossyTask::deletesSourceType() const
{
    static constexpr QStringView types[] = {u"WAV", u"AIF", u"AIFF", u"FLAC", u"SHN", u"M4A"};
    return std::ranges::find(types, QStringView(m_fileType)) != std::end(types);
}

void LossyTask::finish()
{
    if (losesSource() && mayGoOn()) {
        keepSourceOfShortOutput();
    }
}

void LossyTask::keepSourceOfShortOutput()
{
    constexpr double tolerance = 0.25; // seconds; the formats' frames are shorter by far
    const double sourceTime = statedFormat(fileName()).time();
    const double outputTime = statedFormat(writtenFile()).time();
    const bool nothingIsKnown = sourceTime == 0.0 && outputTime == 0.0;
    if (nothingIsKnown || outputTime + tolerance < sourceTime) {
        OriginalFile::keep(*this, fileName(),
                           QStringLiteral("its output is shorter (%1 s) than it says to be (%2 s)")
                               .arg(outputTime, 0, 'f', 2)
                               .arg(sourceTime, 0, 'f', 2));
    }
}

std::shared_ptr<TagsObject> LossyTask::readTags(std::initializer_list<TaggedSource> sources)
{
    const auto *source = std::ranges::find(sources, m_fileType, &TaggedSource::fileType);
    if (source == sources.end()) {
        return nullptr;
    }
    showStatus(QString::fromLatin1(source->status));
    return TagCopy::read(fileName());
}

void LossyTask::runEncoder(const char *tool, const QStringList &arguments, const OutputReader &read)
{
    if (!runTool(toolPath(QString::fromLatin1(tool)), arguments, read)) {
        QFile::remove(writtenFile());
    }
}

} // namespace kruv
