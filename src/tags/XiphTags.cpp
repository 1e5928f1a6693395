// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/XiphTags.h"

#include "base/Version.h"
#include "tags/FlacPadding.h"
#include "tags/TagText.h"

#include <QLoggingCategory>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <flacpicture.h>
#include <memory>
#include <stdexcept>
#include <xiphcomment.h>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(xiphLog, "kruv.tags.xiph", QtWarningMsg)

using TagLib::String;
using TagLib::Ogg::XiphComment;

struct FieldKey
{
    TagField field;
    const char *key;
};

constexpr const char *commentKey = "COMMENT";
constexpr const char *descriptionKey = "DESCRIPTION";

/// In the order of writing. The comment has two keys.
constexpr std::array fieldKeys{
    FieldKey{TagField::Title, "TITLE"},
    FieldKey{TagField::Artist, "ARTIST"},
    FieldKey{TagField::AlbumArtist, "ALBUMARTIST"},
    FieldKey{TagField::Album, "ALBUM"},
    FieldKey{TagField::Disc, "DISCNUMBER"},
    FieldKey{TagField::DiscTotal, "DISCTOTAL"},
    FieldKey{TagField::Track, "TRACKNUMBER"},
    FieldKey{TagField::TrackTotal, "TRACKTOTAL"},
    FieldKey{TagField::Comment, commentKey},
    FieldKey{TagField::Comment, descriptionKey},
    FieldKey{TagField::Genre, "GENRE"},
    FieldKey{TagField::Composer, "COMPOSER"},
};
constexpr const char *dateKey = "DATE";
constexpr const char *encoderKey = "ENCODER";

constexpr unsigned int longestBlock = 0xFFFFFF;
/// A picture block's own fields, beside the picture's bytes.
constexpr unsigned int pictureFieldsSize = 64;

/// A length in a comment block: 32 bits, the least byte first. Nothing is left where it ends too early.
std::uint32_t takeLength(QByteArrayView &rest)
{
    if (rest.size() < static_cast<qsizetype>(sizeof(std::uint32_t))) {
        rest = {};
        return 0;
    }
    const auto length = qFromLittleEndian<std::uint32_t>(rest.data());
    rest = rest.sliced(sizeof(std::uint32_t));
    return length;
}

QByteArrayView takeText(QByteArrayView &rest)
{
    const std::uint32_t length = takeLength(rest);
    const QByteArrayView text = rest.first(std::min<qsizetype>(length, rest.size()));
    rest = rest.sliced(text.size());
    return text;
}

bool isKnown(const String &key)
{
    return key == dateKey || key == encoderKey ||
           std::any_of(fieldKeys.begin(), fieldKeys.end(),
                       [&](const FieldKey &row) { return key == row.key; });
}

QString joinedValues(const XiphComment &comment, const String &key)
{
    const auto &fields = comment.fieldListMap();
    return fields.contains(key) ? fromTagLibString(fields[key].toString(" ")) : QString();
}

/// Values that read the same already are left alone: they may be several.
void writeField(XiphComment &comment, const String &key, const QString &text)
{
    if (text.isEmpty() || joinedValues(comment, key) != text) {
        comment.addField(key, toTagLibString(text), true);
    }
}

/// Where the comment's two fields differ, only the description is shown. A record that goes back with it
/// leaves the other one alone.
bool isCommentApart(const XiphComment &comment, const FieldKey &row, const QString &text)
{
    return row.key == commentKey && comment.contains(commentKey) &&
           joinedValues(comment, descriptionKey) == text;
}

void clearExceptEncoder(XiphComment &comment)
{
    const TagLib::Ogg::FieldListMap fields = comment.fieldListMap();
    for (const auto &[key, values] : fields) {
        if (key != encoderKey) {
            comment.removeFields(key);
        }
    }
    comment.removeAllPictures();
}

/// Those very bytes, as when a record goes back into the file it came from. A FLAC file has its pictures in
/// blocks, an Ogg file in its comment.
template <typename Holder> bool holdsPicture(Holder &holder, const AlbumArt &art)
{
    const QByteArray &bytes = art.encoded();
    const auto pictures = holder.pictureList();
    return std::any_of(pictures.begin(), pictures.end(), [&bytes](const TagLib::FLAC::Picture *picture) {
        const TagLib::ByteVector held = picture->data();
        return QByteArrayView(held.data(), static_cast<qsizetype>(held.size())) == bytes;
    });
}

template <typename Holder> bool addPicture(Holder &holder, const TagsObject &record)
{
    constexpr qsizetype mostBytes = longestBlock - pictureFieldsSize;
    const auto art = record.picture();
    if (!art || holdsPicture(holder, *art) || art->png().bytes.isEmpty()) {
        return true;
    }
    const AlbumArt::Png &png = art->png();
    // A large photograph fits as the JPEG it came as, and not as PNG.
    const bool asItCame = png.bytes.size() > mostBytes && !art->encoded().isEmpty();
    const QByteArray bytes = asItCame ? art->encoded() : png.bytes;
    if (bytes.size() > mostBytes) {
        qCWarning(xiphLog, "Picture too large for a FLAC file");
        return false;
    }
    auto picture = std::make_unique<TagLib::FLAC::Picture>();
    picture->setMimeType(asItCame ? art->mimeType().constData() : "image/png");
    picture->setWidth(png.width);
    picture->setHeight(png.height);
    picture->setColorDepth(png.bitsPerPixel);
    picture->setData(TagLib::ByteVector(bytes.constData(), static_cast<unsigned int>(bytes.size())));
    holder.addPicture(picture.release());
    return true;
}

void writeCustomTags(XiphComment &comment, const TagsObject::CustomTags &tags)
{
    for (auto tag = tags.cbegin(); tag != tags.cend(); ++tag) {
        if (tag.value().isEmpty()) {
            continue;
        }
        qCInfo(xiphLog, "setting custom tag: %s %s", qUtf8Printable(tag.key()), qUtf8Printable(tag.value()));
        try {
            const String key = toTagLibString(tag.key());
            // The editor trims what it shows; that alone is no change.
            if (joinedValues(comment, key).trimmed() != tag.value()) {
                writeField(comment, key, tag.value());
            }
            if (!comment.contains(key)) {
                throw std::invalid_argument("not a field name");
            }
        } catch (const std::exception &) {
            qCWarning(xiphLog, "Error setting custom tag: %s", qUtf8Printable(tag.key()));
        }
    }
}

void readFields(const XiphComment &comment, TagsObject &record)
{
    for (const FieldKey &row : fieldKeys) {
        const QString text = joinedValues(comment, row.key);
        if (!text.isNull()) {
            record.setText(row.field, text);
        }
    }
    readDate(joinedValues(comment, dateKey), record);
    TagsObject::CustomTags customTags;
    for (const auto &[key, values] : comment.fieldListMap()) {
        if (!isKnown(key)) {
            customTags.insert(fromTagLibString(key), fromTagLibString(values.toString(" ")));
        }
    }
    record.setCustomTagsDictionary(customTags);
}

template <typename Holder> void readPicture(Holder &holder, TagsObject &record)
{
    const auto pictures = holder.pictureList();
    if (!pictures.isEmpty()) {
        const TagLib::ByteVector bytes = pictures.front()->data();
        record.setEncodedAlbumArt({bytes.data(), static_cast<qsizetype>(bytes.size())});
    }
}

void writeTexts(XiphComment &comment, const TagsObject &record, bool writeEmptyTags)
{
    for (const FieldKey &row : fieldKeys) {
        const QString text = record.text(row.field);
        if (isToBeWritten(text, writeEmptyTags) && !isCommentApart(comment, row, text)) {
            writeField(comment, row.key, text);
        }
    }
}

/// What the DATE field is to be.
QString dateOf(const XiphComment &comment, const TagsObject &record)
{
    return record.yearText().isEmpty() ? joinedValues(comment, dateKey) : joinedDate(record);
}

} // namespace

void takeLatin1Fields(TagLib::IOStream &stream, XiphComment &comment)
{
    const TagLib::ByteVector block = readFlacComments(stream);
    QByteArrayView rest(block.data(), static_cast<qsizetype>(block.size()));
    takeText(rest); // the vendor's
    for (std::uint32_t count = takeLength(rest); count > 0 && !rest.isEmpty(); --count) {
        const QByteArrayView field = takeText(rest);
        const qsizetype sign = field.indexOf('=');
        if (sign > 0 && !field.isValidUtf8()) {
            comment.addField(toTagLibString(QString::fromLatin1(field.first(sign))),
                             toTagLibString(QString::fromLatin1(field.sliced(sign + 1))), false);
        }
    }
}

void readXiph(TagLib::FLAC::File &file, TagsObject &record)
{
    if (const XiphComment *comment = file.hasXiphComment() ? file.xiphComment() : nullptr) {
        readFields(*comment, record);
    }
    readPicture(file, record);
}

void readOggXiph(XiphComment &comment, TagsObject &record)
{
    readFields(comment, record);
    readPicture(comment, record);
}

bool writeXiph(TagLib::FLAC::File &file, const TagsObject &record, bool writeEmptyTags, QString &date)
{
    XiphComment &comment = *file.xiphComment(true);
    if (writeEmptyTags) {
        clearExceptEncoder(comment);
        file.removePictures();
    }
    writeTexts(comment, record, writeEmptyTags);
    if (!addPicture(file, record)) {
        return false;
    }
    comment.addField(encoderKey, toTagLibString(QStringLiteral("Kruv %1").arg(shortVersion())), true);
    writeCustomTags(comment, record.customTagsDictionary());
    date = dateOf(comment, record);
    // metaflac sets the date once this is saved. With the field here already it finds room for it in place,
    // and never has to rewrite the file.
    writeField(comment, dateKey, date);
    return comment.render(false).size() <= longestBlock;
}

bool writeOggXiph(XiphComment &comment, const TagsObject &record, bool writeEmptyTags)
{
    if (writeEmptyTags) {
        clearExceptEncoder(comment);
    }
    writeTexts(comment, record, writeEmptyTags);
    writeCustomTags(comment, record.customTagsDictionary());
    if (const QString date = dateOf(comment, record); !date.isEmpty()) {
        writeField(comment, dateKey, date);
    }
    return addPicture(comment, record);
}

} // namespace kruv
