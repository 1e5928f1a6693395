// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/TagCopy.h"

#include "formats/Format.h"
#include "tags/TagAccess.h"
#include "tags/TagsObject.h"

#include <QCoreApplication>

#include <stdexcept>

namespace kruv::TagCopy {

std::shared_ptr<TagsObject> read(const Format &format, const QString &path)
{
    return format.tags ? format.tags->read(path) : std::make_shared<TagsObject>();
}

void write(const Format &format, const QString &path, const TagsObject &record)
{
    constexpr bool writeEmptyTags = false;
    if (!format.tags || !format.tags->write(path, record, writeEmptyTags)) {
        throw std::runtime_error(
            QCoreApplication::translate("TagCopy", "the file is missing, read-only or could not be saved")
                .toStdString());
    }
}

void copy(const Format &sourceFormat, const QString &source, const Format &targetFormat,
          const QString &target)
{
    write(targetFormat, target, *read(sourceFormat, source));
}

} // namespace kruv::TagCopy
