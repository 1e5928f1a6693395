// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/CommonTags.h"

#include "formats/TagFormats.h"

namespace kruv {

namespace {

constexpr std::array comparedFields{
    TagField::Album,  TagField::Year,        TagField::Month,     TagField::Day,
    TagField::Artist, TagField::AlbumArtist, TagField::Comment,   TagField::Disc,
    TagField::Genre,  TagField::TrackTotal,  TagField::DiscTotal, TagField::Composer,
};

} // namespace

CommonTags CommonTags::read(const QStringList &files, const std::stop_token &stop,
                            const std::function<void(qsizetype done)> &progress)
{
    CommonTags common;
    qsizetype done = 0;
    for (const QString &file : files) {
        if (stop.stop_requested()) {
            break;
        }
        const auto next = TagFormats::readOrBlank(TagFormats::readForComparison, file);
        if (!common.record) {
            common.record = next;
            common.record->setCustomTagsDictionary({});
        } else {
            common.compare(*next);
        }
        progress(++done);
    }
    return common;
}

void CommonTags::compare(const TagsObject &next)
{
    for (const TagField field : comparedFields) {
        const auto index = static_cast<std::size_t>(field);
        if (!differing[index] && !TagsObject::stringTagsEqual(record->text(field), next.text(field))) {
            record->setText(field, QStringLiteral(""));
            differing[index] = true;
        }
    }
    if (!picturesDiffer && !record->hasSameAlbumArt(next)) {
        record->setPicture(nullptr);
        picturesDiffer = true;
    }
}

} // namespace kruv
