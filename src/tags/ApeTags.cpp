// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/ApeTags.h"

#include "tags/ApePictures.h"
#include "tags/LeadingNumber.h"
#include "tags/MoreTags.h"
#include "tags/TagText.h"

#include <QDate>
#include <QLoggingCategory>

#include <algorithm>
#include <apefooter.h>
#include <array>
#include <string_view>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(apeLog, "kruv.tags.ape", QtWarningMsg)

using TagLib::String;
using TagLib::APE::Item;
using TagLib::APE::Tag;

struct TextItem
{
    TagField field;
    const char *name;
};
constexpr std::string_view secondAlbumArtist = "AlbumArtist";
/// Where a field has two names, the first is the one that is written.
constexpr std::array textItems{
    TextItem{TagField::Title, "TITLE"},
    TextItem{TagField::Artist, "ARTIST"},
    TextItem{TagField::Album, "ALBUM"},
    TextItem{TagField::AlbumArtist, "Album Artist"},
    TextItem{TagField::AlbumArtist, secondAlbumArtist.data()},
    TextItem{TagField::Comment, "COMMENT"},
    TextItem{TagField::Genre, "GENRE"},
    TextItem{TagField::Composer, "Composer"},
};

/// A number with its total, in one item as "3/12".
struct PairItem
{
    TagField number;
    TagField total;
    const char *name;
    /// Only the number itself is shown, without zeros in front.
    bool isNumeric;
};
constexpr std::array pairItems{
    PairItem{TagField::Track, TagField::TrackTotal, "TRACK", true},
    PairItem{TagField::Disc, TagField::DiscTotal, "Disc", false},
};
constexpr const char *yearItem = "YEAR";
constexpr const char *encoderItem = "Encoder";

/// Tools and players read no larger tag.
constexpr unsigned int largestTag = 1U << 24U;

String keyOf(const char *name)
{
    return String(name).upper();
}

bool isText(const Item &item)
{
    return item.type() == Item::Text && !item.isEmpty();
}

QStringList valuesOf(const Tag &tag, const String &key)
{
    const auto &items = tag.itemListMap();
    return items.contains(key) && isText(items[key]) ? fromTagLibList(items[key].values()) : QStringList();
}

QString textOf(const Tag &tag, const char *name)
{
    return valuesOf(tag, keyOf(name)).join(u' ');
}

struct NumberPair
{
    QString number;
    QString total;
};

NumberPair pairOf(const Tag &tag, const PairItem &item)
{
    const QString text = textOf(tag, item.name);
    const qsizetype slash = text.indexOf(u'/');
    NumberPair pair{slash < 0 ? text : text.left(slash), slash < 0 ? QString() : text.mid(slash + 1)};
    if (item.isNumeric && !pair.number.isEmpty() && pair.number.front().isDigit()) {
        const int number = leadingInt32(pair.number);
        pair.number = number == 0 ? QString() : QString::number(number);
    }
    return pair;
}

void readYear(const Tag &tag, TagsObject &record)
{
    const QString text = textOf(tag, yearItem);
    constexpr qsizetype dateLength = 10;
    if (text.size() == dateLength && QDate::fromString(text, Qt::ISODate).isValid()) {
        readDate(text, record);
    } else if (const int year = leadingInt32(text); year != 0) {
        record.setYearText(QString::number(year));
        record.setUnparsedDate(text);
    }
}

/// An item keeps the case of its name.
String spelled(const Tag &tag, const String &name)
{
    const auto &items = tag.itemListMap();
    const String key = name.upper();
    return items.contains(key) ? items[key].key() : name;
}

void setValues(Tag &tag, const String &name, const QStringList &values)
{
    if (values.join(QString()).isEmpty()) {
        tag.removeItem(name.upper());
    } else {
        tag.setItem(name.upper(), Item(spelled(tag, name), toTagLibList(values)));
    }
}

/// Values that read the same already are left alone: they may be several.
void writeText(Tag &tag, const TextItem &item, const TagsObject &record, bool writeEmptyTags)
{
    const QString text = record.text(item.field);
    if (isToBeWritten(text, writeEmptyTags) && textOf(tag, item.name) != text) {
        setValues(tag, item.name, record.values(item.field));
    }
}

/// What the record says nothing of stays, unless it is to be cleared; and so does what reads the same, which
/// may be spelled in another way ("03").
void writePair(Tag &tag, const PairItem &item, const TagsObject &record, bool writeEmptyTags)
{
    const NumberPair held = pairOf(tag, item);
    const auto [number, total] = numberAndTotal(record, item.number, item.total);
    NumberPair pair{number, total};
    if (item.isNumeric && leadingInt32(pair.number) > 0) {
        pair.number = QString::number(leadingInt32(pair.number));
    }
    pair.number = isToBeWritten(pair.number, writeEmptyTags) ? pair.number : held.number;
    pair.total = isToBeWritten(pair.total, writeEmptyTags) ? pair.total : held.total;
    if (pair.number != held.number || pair.total != held.total) {
        setValues(
            tag, item.name,
            {pair.total.isEmpty() ? pair.number : QStringLiteral("%1/%2").arg(pair.number, pair.total)});
    }
}

/// The day goes with the year only where the record has one.
void writeYear(Tag &tag, const TagsObject &record, bool writeEmptyTags)
{
    const QString text = record.yearText();
    const QString date = joinedDate(record);
    const int year = std::max(0, leadingInt32(text));
    const bool hasDay = !record.monthText().isEmpty() && !record.dayText().isEmpty();
    if (text.isEmpty() ? !date.isEmpty() : year != 0 && hasDay) {
        setValues(tag, yearItem, {date});
    } else if (!isToBeWritten(text, writeEmptyTags)) {
        return;
    } else if (year == 0 || writeEmptyTags || leadingInt32(textOf(tag, yearItem)) != year) {
        tag.setYear(static_cast<unsigned int>(year));
    }
}

void writeCustomTags(Tag &tag, const TagsObject &record)
{
    const TagsObject::CustomTags tags = record.customTagsDictionary();
    for (auto each = tags.cbegin(); each != tags.cend(); ++each) {
        if (each.value().isEmpty()) {
            continue;
        }
        const String name = toTagLibString(each.key());
        if (!isCustomApeName(each.key())) {
            qCWarning(apeLog, "Error setting custom tag: %s", qUtf8Printable(each.key()));
        } else if (valuesOf(tag, name.upper()).join(u' ').trimmed() != each.value()) {
            setValues(tag, name, record.customValues(each.key()));
        }
    }
}

} // namespace

bool isCustomApeName(const QString &name)
{
    const String key = toTagLibString(name.toUpper());
    const auto is = [&key](const auto &row) { return keyOf(row.name) == key; };
    return Tag::checkKey(key) && key != keyOf(yearItem) && key != keyOf(encoderItem) &&
           !isApePictureName(name) && !std::ranges::any_of(textItems, is) &&
           !std::ranges::any_of(pairItems, is);
}

void readApe(const Tag &tag, TagsObject &record)
{
    for (const TextItem &item : textItems) {
        const QStringList values = valuesOf(tag, keyOf(item.name));
        if (!values.isEmpty() && (item.name != secondAlbumArtist || record.albumArtistText().isEmpty())) {
            record.setValues(item.field, values);
        }
    }
    for (const PairItem &item : pairItems) {
        const NumberPair pair = pairOf(tag, item);
        if (!pair.number.isEmpty()) {
            record.setText(item.number, pair.number);
        }
        if (!pair.total.isEmpty()) {
            record.setText(item.total, pair.total);
        }
    }
    readYear(tag, record);
    for (const auto &[key, item] : tag.itemListMap()) {
        if (const QString name = fromTagLibString(key); isText(item) && isCustomApeName(name)) {
            record.setCustomValues(name, fromTagLibList(item.values()));
        }
    }
    readApePictures(tag, record);
    record.setPartOfFile(record.isPartOfFile() ||
                         MoreTags::isIn(tag)); // a TrueAudio file may have both kinds
}

bool writeApe(Tag &tag, const TagsObject &record, bool writeEmptyTags)
{
    for (const TextItem &item : textItems) {
        // The second name of a field is for what has it already.
        if (item.name != secondAlbumArtist || tag.itemListMap().contains(keyOf(item.name))) {
            writeText(tag, item, record, writeEmptyTags);
        }
    }
    for (const PairItem &item : pairItems) {
        writePair(tag, item, record, writeEmptyTags);
    }
    writeYear(tag, record, writeEmptyTags);
    writeCustomTags(tag, record);
    writeApePictures(tag, record, writeEmptyTags);
    if (tag.render().size() > largestTag) {
        qCWarning(apeLog, "Tags too large: 16 MB are the most");
        return false;
    }
    return true;
}

ApeTagPlace findApeTag(TagLib::File &file)
{
    constexpr long id3v1Length = 128;
    const auto footerLength = static_cast<long>(TagLib::APE::Footer::size());
    long end = file.length();
    if (end >= id3v1Length) {
        file.seek(end - id3v1Length);
        end -= file.readBlock(3) == "TAG" ? id3v1Length : 0;
    }
    const ApeTagPlace none{.footer = -1, .start = end, .length = 0};
    if (end < footerLength) {
        return none;
    }
    file.seek(end - footerLength);
    const TagLib::ByteVector bytes = file.readBlock(static_cast<unsigned long>(footerLength));
    if (!bytes.startsWith(TagLib::APE::Footer::fileIdentifier())) {
        return none;
    }
    const auto length = static_cast<long>(TagLib::APE::Footer(bytes).completeTagSize());
    return length > end ? none : ApeTagPlace{end - footerLength, end - length, length};
}

} // namespace kruv
