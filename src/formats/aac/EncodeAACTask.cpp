// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/aac/EncodeAACTask.h"

#include "audio/EncodeCoreAudioSync.h"
#include "formats/Records.h"
#include "formats/TagCopy.h"
#include "formats/aac/AacOptions.h"
#include "tags/AACTagsHelper.h"
#include "tags/TagsObject.h"

#include <exception>

namespace kruv {

namespace {

/// How the modes, by their numbers, are told in the file.
constexpr const char *words[] = {"CBR %1kbps", "ABR %1kbps", "VBR Constrained %1kbps", "True VBR Quality %1"};

constexpr int variable = 3;

} // namespace

EncodeAACTask::EncodeAACTask(TaskCompletionSink *queue, const ConversionRequest &request)
    : LossyTask(queue, request, aacFormat)
{
}

int EncodeAACTask::level() const
{
    return chosen().number(chosen().number(AacOptions::mode) == variable ? AacOptions::quality
                                                                         : AacOptions::bitRate);
}

QString EncodeAACTask::getEncoderSettingsForTag() const
{
    return QString::fromLatin1(words[chosen().number(AacOptions::mode)]).arg(level());
}

void EncodeAACTask::encode(const QString &input)
{
    showStatus(tr("Encoding to AAC"));
    EncodeCoreAudioSync converter(*this, input, staged(), FormatType::Aac, FileType::M4af);
    const int mode = chosen().number(AacOptions::mode);
    const auto number = static_cast<std::uint32_t>(level());
    converter.setMode(static_cast<std::uint32_t>(mode));
    if (mode == variable) {
        converter.setQuality(number);
    } else {
        constexpr std::uint32_t bitsPerKilobit = 1000;
        converter.setBitrate(number * bitsPerKilobit);
    }
    converter.doEncodeCall();
}

void EncodeAACTask::writeTags()
{
    const auto record = TagCopy::read(sourceFormat(), fileName());
    record->setEncoderSettings(getEncoderSettingsForTag());
    TagCopy::write(aacFormat, staged(), *record);
}

void EncodeAACTask::copyTags()
{
    if (const SourceRule *special = rule(); special && special->tagStatus) {
        showStatus(ConversionTask::tr(special->tagStatus));
    } else if (sourceFormat().tags) {
        showStatus(tr("Copying %1 Tags").arg(sourceFormat().label));
    }
    try {
        writeTags();
        showStatus(tr("Making Gapless"));
        AACTagsHelper().makeGapless(staged());
    } catch (const std::exception &failure) {
        tagsNotCopied(QString::fromUtf8(failure.what()));
    }
}

} // namespace kruv
