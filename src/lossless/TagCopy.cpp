// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "lossless/TagCopy.h"

#include "app/PathNames.h"
#include "tags/AACTagsHelper.h"
#include "tags/TagLibTagsHelper.h"

#include <algorithm>
#include <stdexcept>

namespace kruv::TagCopy {

namespace {

using Record = std::shared_ptr<TagsObject>;

struct Row
{
    QStringView fileType;
    Record (*read)(const QString &path);
    bool (*write)(const QString &path, const TagsObject &record);
};

template <auto reader, auto writer> constexpr Row tagLibRow(QStringView fileType)
{
    return {fileType, [](const QString &path) { return (TagLibTagsHelper().*reader)(path); },
            [](const QString &path, const TagsObject &record) {
                return (TagLibTagsHelper().*writer)(path, record, false);
            }};
}

using Helper = TagLibTagsHelper;

Record readAiff(const QString &path)
{
    return Helper().tagsForAIFFFile(path);
}

bool writeAiff(const QString &path, const TagsObject &record)
{
    return Helper().writeTagsForAIFFFile(path, record);
}

const Row rows[] = {
    tagLibRow<&Helper::tagsForFlacFile, &Helper::writeTagsForFLACFile>(u"FLAC"),
    tagLibRow<&Helper::tagsForWavpackFile, &Helper::writeTagsForWavpackFile>(u"WV"),
    tagLibRow<&Helper::tagsForTTAFile, &Helper::writeTagsForTTAFile>(u"TTA"),
    tagLibRow<&Helper::tagsForAPEFile, &Helper::writeTagsForAPEFile>(u"APE"),
    {u"AIFF", readAiff, writeAiff},
    {u"AIF", readAiff, writeAiff},
    {u"M4A", [](const QString &path) { return AACTagsHelper().tagsForFile(path); },
     [](const QString &path, const TagsObject &record) {
         return AACTagsHelper().writeTagsForFile(path, record, false, true);
     }},
};

const Row *rowFor(const QString &path)
{
    const QString fileType = PathNames::fileType(path);
    const Row *row = std::ranges::find(rows, fileType, &Row::fileType);
    return row == std::end(rows) ? nullptr : row;
}

} // namespace

std::shared_ptr<TagsObject> read(const QString &path)
{
    const Row *row = rowFor(path);
    return row ? row->read(path) : std::make_shared<TagsObject>();
}

void write(const QString &path, const TagsObject &record)
{
    const Row *row = rowFor(path);
    if (!row || !row->write(path, record)) {
        throw std::runtime_error("the file is missing, read-only or could not be saved");
    }
}

} // namespace kruv::TagCopy
