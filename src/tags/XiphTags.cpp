// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/XiphTags.h"

#include "base/Version.h"
#include "tags/FlacBlock.h"
#include "tags/FlacPadding.h"
#include "tags/MoreTags.h"
#include "tags/TagText.h"
#include "tags/XiphPictures.h"

#include <QLoggingCategory>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
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

/// What an encoder says of itself and of its channels goes with its audio, and means nothing in another file.
bool isOfEncoder(const String &key)
{
    return key == encoderKey || key == "ENCODER_OPTIONS" || key == "WAVEFORMATEXTENSIBLE_CHANNEL_MASK";
}

bool isKnown(const String &key)
{
    return key == dateKey || isOfEncoder(key) ||
           std::any_of(fieldKeys.begin(), fieldKeys.end(),
                       [&](const FieldKey &row) { return key == row.key; });
}

QString joinedValues(const XiphComment &comment, const String &key)
{
    const auto &fields = comment.fieldListMap();
    return fields.contains(key) ? fromTagLibString(fields[key].toString(" ")) : QString();
}

/// Several values give as many fields of that name.
void setField(XiphComment &comment, const String &key, const QStringList &values)
{
    comment.addField(key, values.isEmpty() ? String() : toTagLibString(values.constFirst()), true);
    for (const QString &value : values.mid(1)) {
        comment.addField(key, toTagLibString(value), false);
    }
}

/// Values that read the same already are left alone: they may be several.
void writeField(XiphComment &comment, const String &key, const QString &text, const QStringList &values)
{
    if (text.isEmpty() || joinedValues(comment, key) != text) {
        setField(comment, key, values);
    }
}

/// Where the comment's two fields differ, only the description is shown. A record that goes back with it
/// leaves the other one alone.
bool isCommentApart(const XiphComment &comment, const FieldKey &row, const QString &text)
{
    return row.key == commentKey && comment.contains(commentKey) &&
           joinedValues(comment, descriptionKey) == text;
}

/// Several values that the record shows as one text stay several.
void clearExceptEncoder(XiphComment &comment, const TagsObject &record)
{
    const TagLib::Ogg::FieldListMap fields = comment.fieldListMap();
    const TagsObject::CustomTags customTags = record.customTagsDictionary();
    const auto isInRecord = [&](const String &key, const QString &text) {
        return customTags.value(fromTagLibString(key)) == text ||
               std::ranges::any_of(fieldKeys, [&](const FieldKey &row) {
                   return key == row.key && record.text(row.field) == text;
               });
    };
    const auto stays = [&](const String &key) {
        const bool isSeveral = fields[key].size() > 1;
        return isOfEncoder(key) || (isSeveral && isInRecord(key, joinedValues(comment, key)));
    };
    for (const auto &[key, values] : fields) {
        if (!stays(key)) {
            comment.removeFields(key);
        }
    }
    comment.removeAllPictures();
}

void writeCustomTags(XiphComment &comment, const TagsObject &record)
{
    const TagsObject::CustomTags tags = record.customTagsDictionary();
    for (auto tag = tags.cbegin(); tag != tags.cend(); ++tag) {
        if (tag.value().isEmpty()) {
            continue;
        }
        qCInfo(xiphLog, "setting custom tag: %s %s", qUtf8Printable(tag.key()), qUtf8Printable(tag.value()));
        try {
            const String key = toTagLibString(tag.key());
            // The editor trims what it shows; that alone is no change.
            if (joinedValues(comment, key).trimmed() != tag.value()) {
                writeField(comment, key, tag.value(), record.customValues(tag.key()));
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
    const auto &fields = comment.fieldListMap();
    for (const FieldKey &row : fieldKeys) {
        if (fields.contains(row.key)) {
            record.setValues(row.field, fromTagLibList(fields[row.key]));
        }
    }
    readDateOrKeep(joinedValues(comment, dateKey), record);
    record.setCustomTagsDictionary({});
    for (const auto &[key, values] : fields) {
        if (!isKnown(key)) {
            record.setCustomValues(fromTagLibString(key), fromTagLibList(values));
        }
    }
    record.setPartOfFile(MoreTags::isIn(comment));
}

void writeTexts(XiphComment &comment, const TagsObject &record, bool writeEmptyTags)
{
    for (const FieldKey &row : fieldKeys) {
        const QString text = record.text(row.field);
        if (isToBeWritten(text, writeEmptyTags) && !isCommentApart(comment, row, text)) {
            writeField(comment, row.key, text, record.values(row.field));
        }
    }
}

/// What the DATE field is to be.
QString dateOf(const XiphComment &comment, const TagsObject &record)
{
    const QString date = joinedDate(record);
    return date.isEmpty() ? joinedValues(comment, dateKey) : date;
}

} // namespace

bool isCustomXiphName(const QString &name)
{
    const auto isAllowed = [](QChar character) {
        return character >= u' ' && character <= u'}' && character != u'=';
    };
    return !name.isEmpty() && std::ranges::all_of(name, isAllowed) &&
           !isKnown(toTagLibString(name.toUpper()));
}

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
    readXiphPictures(file.pictureList(), record);
}

void readOggXiph(XiphComment &comment, TagsObject &record)
{
    readFields(comment, record);
    readXiphPictures(comment.pictureList(), record);
}

bool writeXiph(TagLib::FLAC::File &file, const TagsObject &record, bool writeEmptyTags, QString &date)
{
    XiphComment &comment = *file.xiphComment(true);
    if (writeEmptyTags) {
        clearExceptEncoder(comment, record);
        file.removePictures();
    }
    writeTexts(comment, record, writeEmptyTags);
    if (!addXiphPictures(file, record)) {
        return false;
    }
    comment.addField(encoderKey, toTagLibString(QStringLiteral("Kruv %1").arg(shortVersion())), true);
    writeCustomTags(comment, record);
    date = dateOf(comment, record);
    // metaflac sets the date once this is saved. With the field here already it finds room for it in place,
    // and never has to rewrite the file.
    writeField(comment, dateKey, date, {date});
    return comment.render(false).size() <= static_cast<unsigned>(longestFlacBlock);
}

bool writeOggXiph(XiphComment &comment, const TagsObject &record, bool writeEmptyTags)
{
    if (writeEmptyTags) {
        clearExceptEncoder(comment, record);
    }
    writeTexts(comment, record, writeEmptyTags);
    writeCustomTags(comment, record);
    if (const QString date = dateOf(comment, record); !date.isEmpty()) {
        writeField(comment, dateKey, date, {date});
    }
    return addXiphPictures(comment, record);
}

} // namespace kruv
