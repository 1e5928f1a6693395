// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/TagsObject.h"

#include <algorithm>
#include <utility>

namespace kruv {

QString TagsObject::text(TagField field) const
{
    const std::lock_guard guard(m_lock);
    return m_texts[static_cast<std::size_t>(field)];
}

void TagsObject::setText(TagField field, const QString &text)
{
    const std::lock_guard guard(m_lock);
    m_texts[static_cast<std::size_t>(field)] = text;
    m_values[static_cast<std::size_t>(field)].clear();
}

QStringList TagsObject::values(TagField field) const
{
    const std::lock_guard guard(m_lock);
    const auto index = static_cast<std::size_t>(field);
    return m_values[index].isEmpty() && !m_texts[index].isEmpty() ? QStringList{m_texts[index]}
                                                                  : m_values[index];
}

void TagsObject::setValues(TagField field, const QStringList &values)
{
    const std::lock_guard guard(m_lock);
    m_texts[static_cast<std::size_t>(field)] = values.join(u' ');
    m_values[static_cast<std::size_t>(field)] = values;
}

QImage TagsObject::albumArt() const
{
    const auto art = picture();
    return art ? art->image() : QImage();
}

void TagsObject::setAlbumArt(const QImage &image)
{
    setPicture(image.isNull() ? nullptr : std::make_shared<const AlbumArt>(image));
}

void TagsObject::setEncodedAlbumArt(const QByteArray &bytes)
{
    setPicture(bytes.isEmpty() ? nullptr : std::make_shared<const AlbumArt>(bytes));
}

std::shared_ptr<const AlbumArt> TagsObject::picture() const
{
    const std::lock_guard guard(m_lock);
    return m_picture;
}

void TagsObject::setPicture(std::shared_ptr<const AlbumArt> picture)
{
    const std::lock_guard guard(m_lock);
    m_picture = std::move(picture);
}

PictureType TagsObject::pictureType() const
{
    const std::lock_guard guard(m_lock);
    return m_pictureType;
}

std::vector<TypedPicture> TagsObject::otherPictures() const
{
    const std::lock_guard guard(m_lock);
    return m_otherPictures;
}

void TagsObject::setPictures(std::vector<TypedPicture> pictures)
{
    TypedPicture own;
    if (!pictures.empty()) {
        own = std::move(pictures.front());
        pictures.erase(pictures.begin());
    }
    const bool isEmpty = own.art && own.art->encoded().isEmpty() && own.art->image().isNull();
    const std::lock_guard guard(m_lock);
    m_picture = isEmpty ? nullptr : std::move(own.art);
    m_pictureType = own.type;
    m_otherPictures = std::move(pictures);
}

QString TagsObject::unparsedDate() const
{
    const std::lock_guard guard(m_lock);
    return m_unparsedDate;
}

void TagsObject::setUnparsedDate(const QString &text)
{
    const std::lock_guard guard(m_lock);
    m_unparsedDate = text;
}

bool TagsObject::isPartOfFile() const
{
    const std::lock_guard guard(m_lock);
    return m_isPartOfFile;
}

void TagsObject::setPartOfFile(bool isPart)
{
    const std::lock_guard guard(m_lock);
    m_isPartOfFile = isPart;
}

TagsObject::CustomTags TagsObject::customTagsDictionary() const
{
    const std::lock_guard guard(m_lock);
    return m_customTagsDictionary;
}

void TagsObject::setCustomTagsDictionary(const CustomTags &tags)
{
    const std::lock_guard guard(m_lock);
    m_customTagsDictionary = tags;
}

QStringList TagsObject::customValues(const QString &name) const
{
    const std::lock_guard guard(m_lock);
    const QString text = m_customTagsDictionary.value(name);
    const QStringList values = m_customValues.value(name);
    return values.join(u' ') == text ? values : QStringList{text}; // the text may have been set since
}

void TagsObject::setCustomValues(const QString &name, const QStringList &values)
{
    const std::lock_guard guard(m_lock);
    m_customTagsDictionary.insert(name, values.join(u' '));
    m_customValues.insert(name, values);
}

bool TagsObject::isEqual(const TagsObject *other) const
{
    return other == this || (other != nullptr && isEqualToTagsObject(*other));
}

bool TagsObject::isEqualToTagsObject(const TagsObject &other) const
{
    static constexpr std::array compared{
        TagField::Title,  TagField::Album,       TagField::Year,      TagField::Month,    TagField::Day,
        TagField::Artist, TagField::AlbumArtist, TagField::Comment,   TagField::Disc,     TagField::Track,
        TagField::Genre,  TagField::TrackTotal,  TagField::DiscTotal, TagField::Composer,
    };
    return std::all_of(compared.begin(), compared.end(),
                       [&](TagField field) { return stringTagsEqual(text(field), other.text(field)); }) &&
           hasSameAlbumArt(other);
}

bool TagsObject::hasSameAlbumArt(const TagsObject &other) const
{
    const auto own = picture();
    const auto theirs = other.picture();
    if (own && theirs) {
        return own->isSameAs(*theirs);
    }
    // What is broken counts as no picture.
    return albumArt() == other.albumArt();
}

bool TagsObject::stringTagsEqual(const QString &string1, const QString &string2)
{
    return string1.isNull() == string2.isNull() && string1 == string2;
}

} // namespace kruv
