// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/TagFormats.h"

#include "base/PathNames.h"
#include "tags/AACTagsHelper.h"
#include "tags/FlacTagHelper.h"
#include "tags/TagLibTagsHelper.h"

#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <exception>
#include <iterator>

namespace kruv::TagFormats {

namespace {

Q_LOGGING_CATEGORY(tagFormatLog, "kruv.tags.formats", QtWarningMsg)

using Reader = Record (TagLibTagsHelper::*)(const QString &) const;
using Writer = bool (TagLibTagsHelper::*)(const QString &, const TagsObject &, bool) const;

template <Reader reader> Record readWith(const QString &path)
{
    return (TagLibTagsHelper().*reader)(path);
}

template <Writer writer> bool writeWith(const QString &path, const TagsObject &record, bool writeEmptyTags)
{
    return (TagLibTagsHelper().*writer)(path, record, writeEmptyTags);
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
    return TagLibTagsHelper().writeTagsForAIFFFile(path, record);
}

struct Format
{
    QStringView type;
    Record (*read)(const QString &path);
    bool (*write)(const QString &path, const TagsObject &record, bool writeEmptyTags);
    bool isCompared = true;
    /// Only what the tag library's generic tag has.
    bool isGeneric = false;
};

using Helper = TagLibTagsHelper;
constexpr Format formats[] = {
    {u"FLAC", readWith<&Helper::tagsForFlacFile>, writeWith<&Helper::writeTagsForFLACFile>},
    {u"MP3", readWith<&Helper::tagsForMP3File>, writeWith<&Helper::writeTagsForMP3File>},
    {u"APE", readWith<&Helper::tagsForAPEFile>, writeWith<&Helper::writeTagsForAPEFile>, true, true},
    {u"WV", readWith<&Helper::tagsForWavpackFile>, writeWith<&Helper::writeTagsForWavpackFile>, true, true},
    {u"TTA", readWith<&Helper::tagsForTTAFile>, writeWith<&Helper::writeTagsForTTAFile>, true, true},
    {u"M4A", readMp4, writeMp4},
    {u"AIFF", readWith<&Helper::tagsForAIFFFile>, writeAiff, false},
    {u"AIF", readWith<&Helper::tagsForAIFFFile>, writeAiff, false},
};

const Format *formatOf(const QString &type)
{
    const auto *found =
        std::ranges::find_if(formats, [&type](const Format &row) { return row.type == type; });
    return found == std::end(formats) ? nullptr : found;
}

} // namespace

Record read(const QString &path)
{
    const Format *format = formatOf(PathNames::fileType(path));
    return format ? format->read(path) : readMp4(path);
}

Record readForComparison(const QString &path)
{
    const Format *format = formatOf(PathNames::fileType(path));
    return format && format->isCompared ? format->read(path) : readMp4(path);
}

Record readOrBlank(Record (*read)(const QString &path), const QString &path)
{
    try {
        return read(path);
    } catch (const std::exception &failure) {
        qCInfo(tagFormatLog, "%s: %s", qUtf8Printable(path), failure.what());
    }
    auto blank = std::make_shared<TagsObject>();
    TagLibTagsHelper().setBlankTags(*blank);
    return blank;
}

bool holds(const QString &type, TagField field)
{
    constexpr std::array generic{TagField::Title, TagField::Artist, TagField::Album, TagField::Comment,
                                 TagField::Genre, TagField::Year,   TagField::Track};
    const Format *format = formatOf(type);
    return format && (!format->isGeneric || std::ranges::count(generic, field) > 0);
}

bool holdsPicture(const QString &type)
{
    const Format *format = formatOf(type);
    return format && !format->isGeneric;
}

bool holdsCustomTags(const QString &type)
{
    return type == u"FLAC";
}

bool isWritten(const QString &type)
{
    return formatOf(type) != nullptr;
}

bool write(const QString &type, const QString &path, const TagsObject &record, bool writeEmptyTags)
{
    return formatOf(type)->write(path, record, writeEmptyTags);
}

void removePadding(const QString &type, const QString &path)
{
    if (type == u"FLAC") {
        FlacTagHelper().removePadding(path);
    }
}

} // namespace kruv::TagFormats
