// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/TagCopy.h"

#include "base/PathNames.h"
#include "formats/TagFormats.h"
#include "tags/AACTagsHelper.h"

#include <stdexcept>

namespace kruv::TagCopy {

std::shared_ptr<TagsObject> read(const QString &path)
{
    return TagFormats::isWritten(PathNames::fileType(path)) ? TagFormats::read(path)
                                                            : std::make_shared<TagsObject>();
}

void write(const QString &path, const TagsObject &record)
{
    constexpr bool writeEmptyTags = false;
    constexpr bool encoding = true;
    const QString type = PathNames::fileType(path);
    const bool written =
        type == u"M4A" ? AACTagsHelper().writeTagsForFile(path, record, writeEmptyTags, encoding)
                       : TagFormats::isWritten(type) && TagFormats::write(type, path, record, writeEmptyTags);
    if (!written) {
        throw std::runtime_error("the file is missing, read-only or could not be saved");
    }
}

} // namespace kruv::TagCopy
