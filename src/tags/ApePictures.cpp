// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/ApePictures.h"

#include "tags/TagText.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kruv {

namespace {

using TagLib::String;
using TagLib::APE::Item;
using TagLib::APE::Tag;

/// By type.
constexpr std::array kinds{
    "Other",
    "Png Icon",
    "Icon",
    "Front",
    "Back",
    "Leaflet",
    "Media",
    "Lead Artist",
    "Artist",
    "Conductor",
    "Band",
    "Composer",
    "Lyricist",
    "Recording Location",
    "During Recording",
    "During Performance",
    "Video Capture",
    "Fish",
    "Illustration",
    "Band Logotype",
    "Publisher Logotype",
};

QString itemName(PictureType type)
{
    const auto index = static_cast<std::size_t>(type);
    return QStringLiteral("Cover Art (%1)")
        .arg(QLatin1StringView(kinds.at(index < kinds.size() ? index : 0)));
}

std::optional<PictureType> typeOf(const QString &name)
{
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        const auto type = static_cast<PictureType>(index);
        if (name.compare(itemName(type), Qt::CaseInsensitive) == 0) {
            return type;
        }
    }
    return std::nullopt;
}

/// The picture stands after a file name and a zero byte; some programs leave both out.
TypedPicture pictureOf(PictureType type, const Item &item)
{
    const QByteArray data = fromTagLibBytes(item.binaryData());
    const bool isBare = data.startsWith("\xFF\xD8\xFF") || data.startsWith("\x89PNG");
    const qsizetype zero = isBare ? -1 : data.indexOf('\0');
    const QString name = QString::fromUtf8(data.first(std::max<qsizetype>(zero, 0)));
    const bool isDescribed = !name.startsWith(itemName(type), Qt::CaseInsensitive);
    return {type, isDescribed ? name : QString(), std::make_shared<const AlbumArt>(data.mid(zero + 1))};
}

QByteArray encodedBytes(const AlbumArt &art)
{
    return art.encoded().isEmpty() ? art.png().bytes : art.encoded();
}

void setPicture(Tag &tag, PictureType type, const QString &description, const AlbumArt &art)
{
    const QByteArray bytes = encodedBytes(art);
    if (bytes.isEmpty()) {
        return;
    }
    const QString name = itemName(type);
    const QByteArray kind = art.encoded().isEmpty() ? QByteArray("image/png") : art.mimeType();
    const QString extension =
        QString::fromLatin1(kind == "image/jpeg" ? "jpg" : kind.mid(kind.indexOf('/') + 1));
    const QString fileName = !description.isEmpty() ? description
                             : extension.isEmpty()  ? name
                                                    : name + u'.' + extension;
    constexpr bool binary = true;
    tag.setItem(toTagLibString(name.toUpper()),
                Item(toTagLibString(name), toTagLibBytes(fileName.toUtf8() + '\0' + bytes), binary));
}

std::optional<TypedPicture> held(const Tag &tag, PictureType type)
{
    const auto &items = tag.itemListMap();
    const String key = toTagLibString(itemName(type).toUpper());
    if (!items.contains(key) || items[key].type() != Item::Binary) {
        return std::nullopt;
    }
    return pictureOf(type, items[key]);
}

} // namespace

PictureType apePictureType(const TagsObject &record)
{
    const auto others = record.otherPictures();
    const bool isFrontApart =
        std::ranges::any_of(others, [](const auto &each) { return each.type == PictureType::FrontCover; });
    return isFrontApart ? record.pictureType() : PictureType::FrontCover;
}

bool isApePictureName(const QString &name)
{
    return typeOf(name).has_value();
}

void readApePictures(const Tag &tag, TagsObject &record)
{
    std::vector<TypedPicture> pictures;
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        if (const auto picture = held(tag, static_cast<PictureType>(index))) {
            pictures.push_back(*picture);
        }
    }
    const auto front = std::ranges::find(pictures, PictureType::FrontCover, &TypedPicture::type);
    if (front != pictures.end()) {
        std::rotate(pictures.begin(), front, front + 1);
    }
    record.setPictures(std::move(pictures));
}

void writeApePictures(Tag &tag, const TagsObject &record, bool writeEmptyTags)
{
    const auto art = record.picture();
    if (!art && writeEmptyTags) {
        for (std::size_t index = 0; index < kinds.size(); ++index) {
            tag.removeItem(toTagLibString(itemName(static_cast<PictureType>(index)).toUpper()));
        }
    }
    if (art) {
        const PictureType type = apePictureType(record);
        const auto before = held(tag, type);
        if (!before || !before->art->isSameAs(*art)) {
            setPicture(tag, type, {}, *art);
        }
    }
    for (const TypedPicture &other : record.otherPictures()) {
        if (!held(tag, other.type)) {
            setPicture(tag, other.type, other.description, *other.art);
        }
    }
}

} // namespace kruv
