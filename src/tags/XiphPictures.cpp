// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/XiphPictures.h"

#include "tags/FlacBlock.h"
#include "tags/TagText.h"

#include <QLoggingCategory>

#include <algorithm>
#include <memory>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(xiphPictureLog, "kruv.tags.xiph", QtWarningMsg)

using TagLib::FLAC::Picture;

/// What the picture's own fields take of a block.
constexpr qsizetype pictureFieldsSize = 64;

/// Those very bytes, as when a record goes back into the file it came from.
bool holdsPicture(const TagLib::List<Picture *> &pictures, const AlbumArt &art)
{
    return std::any_of(pictures.begin(), pictures.end(), [&art](const Picture *picture) {
        const TagLib::ByteVector held = picture->data();
        return QByteArrayView(held.data(), static_cast<qsizetype>(held.size())) == art.encoded();
    });
}

/// Null where it is too large. A picture that came encoded goes on as it came where that is asked for, or
/// where it fits no other way: a large photograph does as JPEG, and not as PNG.
std::unique_ptr<Picture> makePicture(const AlbumArt &art, bool asItCame, qsizetype mostBytes)
{
    const AlbumArt::Png &png = art.png();
    const bool encoded = !art.encoded().isEmpty() && (asItCame || png.bytes.size() > mostBytes);
    const QByteArray bytes = encoded ? art.encoded() : png.bytes;
    if (bytes.size() > mostBytes) {
        qCWarning(xiphPictureLog, "Picture too large for a FLAC file");
        return nullptr;
    }
    auto picture = std::make_unique<Picture>();
    picture->setMimeType(encoded ? art.mimeType().constData() : "image/png");
    picture->setWidth(png.width);
    picture->setHeight(png.height);
    picture->setColorDepth(png.bitsPerPixel);
    picture->setData(toTagLibBytes(bytes));
    return picture;
}

template <typename Holder> bool addPictures(Holder &holder, const TagsObject &record)
{
    constexpr qsizetype mostBytes = longestFlacBlock - pictureFieldsSize;
    const auto isNew = [&holder](const std::shared_ptr<const AlbumArt> &art) {
        return art && !holdsPicture(holder.pictureList(), *art) && !art->png().bytes.isEmpty();
    };
    if (const auto art = record.picture(); isNew(art)) {
        auto picture = makePicture(*art, false, mostBytes);
        if (!picture) {
            return false;
        }
        holder.addPicture(picture.release());
    }
    for (const TypedPicture &other : record.otherPictures()) {
        if (!isNew(other.art)) {
            continue;
        }
        auto picture = makePicture(*other.art, true, mostBytes - other.description.toUtf8().size());
        if (!picture) {
            return false;
        }
        picture->setType(static_cast<Picture::Type>(other.type));
        picture->setDescription(toTagLibString(other.description));
        holder.addPicture(picture.release());
    }
    return true;
}

} // namespace

void readXiphPictures(const TagLib::List<Picture *> &pictures, TagsObject &record)
{
    std::vector<TypedPicture> read;
    for (const Picture *picture : pictures) {
        read.push_back({static_cast<PictureType>(picture->type()), fromTagLibString(picture->description()),
                        std::make_shared<const AlbumArt>(fromTagLibBytes(picture->data()))});
    }
    record.setPictures(std::move(read));
}

bool addXiphPictures(TagLib::FLAC::File &file, const TagsObject &record)
{
    return addPictures(file, record);
}

bool addXiphPictures(TagLib::Ogg::XiphComment &comment, const TagsObject &record)
{
    return addPictures(comment, record);
}

} // namespace kruv
