// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/TagAccess.h"

#include "tags/AACTagsHelper.h"
#include "tags/ApeTags.h"
#include "tags/FlacTagHelper.h"
#include "tags/TagLibTagsHelper.h"
#include "tags/XiphTags.h"

namespace kruv::TagAccesses {

namespace {

using Helper = TagLibTagsHelper;
using Record = std::shared_ptr<TagsObject>;
using Reader = Record (Helper::*)(const QString &) const;
using Writer = bool (Helper::*)(const QString &, const TagsObject &, bool) const;

template <Reader reader> Record readWith(const QString &path)
{
    return (Helper().*reader)(path);
}

template <Writer writer> bool writeWith(const QString &path, const TagsObject &record, bool writeEmptyTags)
{
    return (Helper().*writer)(path, record, writeEmptyTags);
}

Record readMp4(const QString &path)
{
    return AACTagsHelper().tagsForFile(path);
}

bool writeMp4(const QString &path, const TagsObject &record, bool writeEmptyTags)
{
    constexpr bool encoding = false;
    return AACTagsHelper().writeTagsForFile(path, record, writeEmptyTags, encoding);
}

bool writeAiff(const QString &path, const TagsObject &record, bool /*writeEmptyTags*/)
{
    return Helper().writeTagsForAIFFFile(path, record);
}

void removeFlacPadding(const QString &path)
{
    FlacTagHelper().removePadding(path);
}

} // namespace

const TagAccess flac{.read = readWith<&Helper::tagsForFlacFile>,
                     .write = writeWith<&Helper::writeTagsForFLACFile>,
                     .holdsCustomTag = isCustomXiphName,
                     .removePadding = removeFlacPadding};
const TagAccess mp3{readWith<&Helper::tagsForMP3File>, writeWith<&Helper::writeTagsForMP3File>};
const TagAccess monkeysAudio{.read = readWith<&Helper::tagsForAPEFile>,
                             .write = writeWith<&Helper::writeTagsForAPEFile>,
                             .holdsCustomTag = isCustomApeName,
                             .holdsOnePictureOfAKind = true};
const TagAccess wavpack{.read = readWith<&Helper::tagsForWavpackFile>,
                        .write = writeWith<&Helper::writeTagsForWavpackFile>,
                        .holdsCustomTag = isCustomApeName,
                        .holdsOnePictureOfAKind = true};
const TagAccess tta{.read = readWith<&Helper::tagsForTTAFile>,
                    .write = writeWith<&Helper::writeTagsForTTAFile>,
                    .holdsCustomTag = isCustomApeName,
                    .holdsOnePictureOfAKind = true};
const TagAccess mp4{readMp4, writeMp4};
const TagAccess aiff{readWith<&Helper::tagsForAIFFFile>, writeAiff, false};
const TagAccess vorbis{.read = readWith<&Helper::tagsForVorbisFile>,
                       .write = writeWith<&Helper::writeTagsForVorbisFile>,
                       .holdsCustomTag = isCustomXiphName};
const TagAccess opus{.read = readWith<&Helper::tagsForOpusFile>,
                     .write = writeWith<&Helper::writeTagsForOpusFile>,
                     .holdsCustomTag = isCustomXiphName};

} // namespace kruv::TagAccesses
