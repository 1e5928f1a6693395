// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/TagFormats.h"

#include "base/PathNames.h"
#include "formats/Formats.h"
#include "tags/TagAccess.h"
#include "tags/TagLibTagsHelper.h"

#include <QLoggingCategory>

#include <exception>

namespace kruv::TagFormats {

namespace {

Q_LOGGING_CATEGORY(tagFormatLog, "kruv.tags.formats", QtWarningMsg)

const TagAccess *accessOf(const QString &type)
{
    const Format *format = Formats::ofType(type);
    return format ? format->tags : nullptr;
}

} // namespace

Record read(const QString &path)
{
    const TagAccess *access = accessOf(PathNames::fileType(path));
    return (access ? *access : TagAccesses::mp4).read(path);
}

Record readForComparison(const QString &path)
{
    const TagAccess *access = accessOf(PathNames::fileType(path));
    return (access && access->isCompared ? *access : TagAccesses::mp4).read(path);
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

bool holdsCustomTag(const QString &type, const QString &name)
{
    const TagAccess *access = accessOf(type);
    return access && access->holdsCustomTag && access->holdsCustomTag(name);
}

bool isWritten(const QString &type)
{
    return accessOf(type) != nullptr;
}

bool write(const QString &type, const QString &path, const TagsObject &record, bool writeEmptyTags)
{
    return accessOf(type)->write(path, record, writeEmptyTags);
}

void removePadding(const QString &type, const QString &path)
{
    const TagAccess *access = accessOf(type);
    if (access && access->removePadding) {
        access->removePadding(path);
    }
}

} // namespace kruv::TagFormats
