// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/EncodeAACTask.h"

#include "audio/CoreAudioHelper.h"
#include "audio/EncodeCoreAudioSync.h"
#include "convert/LossyWavSources.h"
#include "tags/AACTagsHelper.h"
#include "tasks/OriginalFile.h"

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <exception>
#include <stdexcept>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(aacLog, "kruv.lossy", QtWarningMsg)

const TranscodeTask::Recipe recipe{
    .firstStatus = "Encoding to AAC",
    .wavSources = LossyWavSources::aac,
    .extension = "m4a",
    .encoder = {},
    .taggedSources = {},
    .readsOtherSources = true,
};

/// A rate mode: its number for the encoder, and how it is told in the file.
struct Mode
{
    QStringView type;
    std::uint32_t number;
    const char *words;
};

constexpr Mode modes[] = {
    {u"CBR", 0, "CBR %1kbps"},
    {u"ABR", 1, "ABR %1kbps"},
    {u"VBR Constrained", 2, "VBR Constrained %1kbps"},
    {u"VBR", 3, "True VBR Quality %1"},
};

const Mode &modeOf(QStringView type)
{
    const auto *mode = std::ranges::find(modes, type, &Mode::type);
    return mode == std::end(modes) ? modes[0] : *mode;
}

} // namespace

EncodeAACTask::EncodeAACTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                             const QString &outputPath, std::int32_t level, bool overwrite)
    : EncodeM4ATask(queue, fileName, outputPath, recipe, level, overwrite)
    , m_type(type)
{
}

QString EncodeAACTask::getEncoderSettingsForTag() const
{
    return QString::fromLatin1(modeOf(m_type).words).arg(level());
}

void EncodeAACTask::encode(const QString &input)
{
    showStatus(QStringLiteral("Encoding to AAC"));
    EncodeCoreAudioSync converter(*this, input, writtenFile(), FormatType::Aac, FileType::M4af);
    const auto number = static_cast<std::uint32_t>(level());
    converter.setMode(modeOf(m_type).number);
    if (m_type == u"VBR") {
        converter.setQuality(number);
    } else {
        constexpr std::uint32_t bitsPerKilobit = 1000;
        converter.setBitrate(number * bitsPerKilobit);
    }
    if (!converter.doEncodeCall() && cancelled()) {
        QFile::remove(writtenFile()); // it plays, and looks whole
    }
}

std::shared_ptr<TagsObject> EncodeAACTask::sourceTags()
{
    std::shared_ptr<TagsObject> record;
    if (fileType() != u"M4A" || CoreAudioHelper::isAppleLossless(fileName())) {
        record = readTags({{u"FLAC", "Copying FLAC Tags"},
                           {u"M4A", "Copying Apple Lossless Tags"},
                           {u"AIFF", "Copying Aiff Tags"},
                           {u"AIF", "Copying Aiff Tags"}});
    }
    return record ? record : std::make_shared<TagsObject>();
}

void EncodeAACTask::writeTags()
{
    const auto record = sourceTags();
    record->setEncoderSettings(getEncoderSettingsForTag());
    if (!AACTagsHelper().writeTagsForFile(writtenFile(), *record, false, true)) {
        throw std::runtime_error("the file is missing, read-only or could not be saved");
    }
}

void EncodeAACTask::optimizeFile()
{
    showStatus(QStringLiteral("Making Gapless"));
    AACTagsHelper().makeGapless(writtenFile());
}

void EncodeAACTask::finish()
{
    try {
        writeTags();
        optimizeFile();
    } catch (const std::exception &failure) {
        const QString reason = QString::fromUtf8(failure.what());
        qCWarning(aacLog, "Error writing tags for %s: %s", qUtf8Printable(writtenFile()),
                  qUtf8Printable(reason));
        appendResults(QStringLiteral("\n\nError writing tags to file: %1:\n%2").arg(writtenFile(), reason));
        if (losesSource()) {
            OriginalFile::keep(*this, fileName(), QStringLiteral("its tags could not be copied"));
        }
    }
    EncodeM4ATask::finish();
}

} // namespace kruv
