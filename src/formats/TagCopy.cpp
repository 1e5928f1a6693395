// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/TagCopy.h"

#include "formats/Format.h"
#include "tags/TagAccess.h"
#include "tags/TagsObject.h"

#include <QCoreApplication>

#include <algorithm>
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

bool covers(const TagsObject &source, const TagsObject &target)
{
    for (std::size_t field = 0; field < tagFieldCount; ++field) {
        const auto which = static_cast<TagField>(field);
        const bool isOurs = which == TagField::EncoderSettings; // the encoder's own
        if (!isOurs && source.text(which).isEmpty() && !target.text(which).isEmpty()) {
            return false;
        }
    }
    const auto customTags = source.customTagsDictionary();
    const QStringList names = target.customTagsDictionary().keys();
    return std::ranges::all_of(names, [&](const QString &name) { return customTags.contains(name); }) &&
           (source.picture() || !target.picture()) &&
           source.otherPictures().size() >= target.otherPictures().size();
}

} // namespace kruv::TagCopy
