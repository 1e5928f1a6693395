// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/Mp4Tags.h"

#include "tags/LeadingNumber.h"
#include "tags/MoreTags.h"
#include "tags/Mp4Genres.h"
#include "tags/TagText.h"

#include <QDate>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace kruv {

namespace {

using TagLib::MP4::CoverArt;
using TagLib::MP4::CoverArtList;
using TagLib::MP4::Item;
using TagLib::MP4::ItemMap;
using TagLib::MP4::Tag;

struct FieldItem
{
    TagField field;
    const char *name;
};

constexpr std::array fieldItems{
    FieldItem{TagField::Title, "\251nam"},    FieldItem{TagField::Artist, "\251ART"},
    FieldItem{TagField::AlbumArtist, "aART"}, FieldItem{TagField::Album, "\251alb"},
    FieldItem{TagField::Comment, "\251cmt"},  FieldItem{TagField::Genre, "\251gen"},
    FieldItem{TagField::Composer, "\251wrt"},
};
constexpr const char *genreItem = "\251gen";
constexpr const char *genreCodeItem = "gnre";
constexpr const char *dateItem = "\251day";
constexpr const char *pictureItem = "covr";

/// A number with its total in one item.
struct PairItem
{
    TagField number;
    TagField total;
    const char *name;
};
constexpr std::array pairItems{
    PairItem{TagField::Track, TagField::TrackTotal, "trkn"},
    PairItem{TagField::Disc, TagField::DiscTotal, "disk"},
};

/// What isn't about the music but about how it was encoded. A player that doesn't find the encoder's delay
/// (in "iTunSMPB") plays samples that aren't part of the recording.
constexpr const char *encoderItem = "\251too";
constexpr const char *delayItem = "iTunSMPB";

QString itemText(const Tag &tag, const char *name)
{
    return tag.contains(name) ? fromTagLibString(tag.item(name).toStringList().toString(" ")) : QString();
}

/// "2004-05-06", also with a time after it as music shops write it, or four characters.
void readMp4Date(const QString &text, TagsObject &record)
{
    constexpr qsizetype dateLength = 10;
    const bool isDate = text.size() == dateLength || text.mid(dateLength, 1) == u"T";
    const QDate date = QDate::fromString(text.left(dateLength), QStringLiteral("yyyy-MM-dd"));
    if (isDate && date.isValid()) {
        record.setYearText(text.left(4));
        record.setMonthText(text.mid(5, 2));
        record.setDayText(text.mid(8, 2));
    } else if (text.size() == 4) {
        record.setYearText(text);
    } else {
        record.setUnparsedDate(text);
    }
}

/// Their kinds are not told.
void readPictures(const Tag &tag, TagsObject &record)
{
    std::vector<TypedPicture> pictures;
    for (const CoverArt &picture : tag.item(pictureItem).toCoverArtList()) {
        pictures.push_back({.art = std::make_shared<const AlbumArt>(fromTagLibBytes(picture.data()))});
    }
    record.setPictures(std::move(pictures));
}

/// The bytes of an item's first value: inside an atom "data", after its kind and language.
QByteArray firstValue(const Mp4Atom &item)
{
    const QByteArray content = item.content();
    Mp4AtomHeader header;
    constexpr qint64 kindAndLanguage = 8;
    if (!header.read(content) || header.name != "data" || header.length > content.size()) {
        return {};
    }
    return content.mid(header.headerLength, header.length - header.headerLength).mid(kindAndLanguage);
}

int clampedNumber(const QString &text)
{
    return std::clamp(leadingInt32(text), 0, 0xFFFF);
}

void writeNumberPair(Tag &tag, const TagsObject &record, const PairItem &pair, QByteArrayList &written)
{
    const auto [numberText, totalText] = numberAndTotal(record, pair.number, pair.total);
    const int number = clampedNumber(numberText);
    const int total = clampedNumber(totalText);
    if (number != 0 || total != 0) {
        tag.setItem(pair.name, Item(number, total));
        written.append(pair.name);
    }
}

/// Text that reads the same already is left alone, or put back: it may be several values.
void writeText(Tag &tag, const ItemMap &before, const char *name, const QStringList &values,
               QByteArrayList &written)
{
    const QString text = values.join(u' ');
    if (!text.isEmpty() && itemText(tag, name) != text) {
        const bool readsTheSame =
            before.contains(name) && fromTagLibList(before[name].toStringList()).join(u' ') == text;
        tag.setItem(name, readsTheSame ? before[name] : Item(toTagLibList(values)));
        written.append(name);
    }
}

CoverArt coverArt(const QByteArray &bytes)
{
    return {bytes.startsWith("\xFF\xD8") ? CoverArt::JPEG : CoverArt::PNG, toTagLibBytes(bytes)};
}

bool isHeld(const CoverArtList &pictures, const AlbumArt &art)
{
    return std::any_of(pictures.begin(), pictures.end(), [&art](const CoverArt &each) {
        return fromTagLibBytes(each.data()) == art.encoded();
    });
}

/// The new picture takes the first one's place, the others stay. So does one that is there already, as when a
/// record goes back into the file it came from.
bool writePicture(CoverArtList &pictures, const AlbumArt &art)
{
    if (!pictures.isEmpty()) {
        if (fromTagLibBytes(pictures.front().data()) == art.encoded()) {
            return true;
        }
        pictures.erase(pictures.begin());
    }
    const QByteArray png = art.png().bytes;
    pictures.prepend(coverArt(png));
    return !png.isEmpty();
}

bool writePictures(Tag &tag, const TagsObject &record, QByteArrayList &written)
{
    const CoverArtList before = tag.item(pictureItem).toCoverArtList();
    CoverArtList pictures = before;
    const auto art = record.picture();
    if (art && !art->image().isNull() && !writePicture(pictures, *art)) {
        return false;
    }
    for (const TypedPicture &other : record.otherPictures()) {
        const QByteArray &bytes = other.art->encoded();
        const bool isKnownKind = bytes.startsWith("\xFF\xD8") || bytes.startsWith("\x89PNG");
        if (!isHeld(pictures, *other.art)) {
            pictures.append(coverArt(isKnownKind ? bytes : other.art->png().bytes));
        }
    }
    const auto data = [](const CoverArt &one, const CoverArt &other) { return one.data() == other.data(); };
    if (!std::equal(pictures.begin(), pictures.end(), before.begin(), before.end(), data)) {
        tag.setItem(pictureItem, Item(pictures));
        written.append(pictureItem);
    }
    return true;
}

void clearExceptEncoding(Tag &tag)
{
    const TagLib::MP4::ItemMap items = tag.itemMap();
    for (const auto &[name, item] : items) {
        if (name != TagLib::String(encoderItem) && name.find(delayItem) < 0) {
            tag.removeItem(name);
        }
    }
}

bool belongsToEncoding(const Mp4Atom &item)
{
    return item.name == encoderItem || (item.name == "----" && item.bytes.contains(delayItem));
}

/// The item list of the index, made with what is around it where there is none.
Mp4Atom &itemList(Mp4Atom &moov, Mp4Atom &saved)
{
    Mp4Atom *userData = moov.find({"udta"});
    if (userData == nullptr) {
        userData = &moov.add(Mp4Atom::container("udta"));
    }
    Mp4Atom *metadata = userData->find({"meta"});
    if (metadata == nullptr) {
        const Mp4Atom *made = saved.find({"udta", "meta"});
        if (made == nullptr) {
            throw Mp4Error("no metadata saved");
        }
        metadata = &userData->add(*made);
    }
    Mp4Atom *items = metadata->find({"ilst"});
    return items != nullptr ? *items : metadata->add(Mp4Atom::container("ilst"));
}

} // namespace

void readMp4Tag(const Tag &tag, TagsObject &record)
{
    for (const FieldItem &row : fieldItems) {
        if (tag.contains(row.name)) {
            record.setValues(row.field, fromTagLibList(tag.item(row.name).toStringList()));
        }
    }
    readMp4Date(itemText(tag, dateItem), record);
    for (const PairItem &row : pairItems) {
        // Asking for an item that isn't there makes one, whose numbers are anything.
        if (!tag.contains(row.name)) {
            continue;
        }
        const Item::IntPair pair = tag.item(row.name).toIntPair();
        const auto set = [&record](TagField field, int value) {
            if (const auto number = static_cast<quint16>(value); number != 0) {
                record.setText(field, QString::number(number));
            }
        };
        set(row.number, pair.first);
        set(row.total, pair.second);
    }
    readPictures(tag, record);
    record.setPartOfFile(MoreTags::isIn(tag));
}

QString readMp4Genre(Mp4Atom &moov)
{
    Mp4Atom *items = moov.find({"udta", "meta", "ilst"});
    if (items == nullptr) {
        return {};
    }
    if (const Mp4Atom *text = items->find({genreItem})) {
        const QByteArray value = firstValue(*text);
        return QString::fromUtf8(value.isNull() ? QByteArray("") : value);
    }
    if (const Mp4Atom *code = items->find({genreCodeItem})) {
        const QByteArray value = firstValue(*code);
        if (value.size() >= 2) {
            return mp4GenreText(qFromBigEndian<quint16>(value.constData())).value_or(QString());
        }
    }
    return {};
}

std::optional<Mp4WrittenItems> writeMp4Tag(Tag &tag, const TagsObject &record, bool writeEmptyTags)
{
    Mp4WrittenItems written{{}, writeEmptyTags};
    const ItemMap before = tag.itemMap();

    if (writeEmptyTags) {
        clearExceptEncoding(tag);
    }
    for (const FieldItem &row : fieldItems) {
        writeText(tag, before, row.name, record.values(row.field), written.names);
    }
    writeText(tag, before, dateItem, {joinedDate(record)}, written.names);
    for (const PairItem &row : pairItems) {
        writeNumberPair(tag, record, row, written.names);
    }
    if (!writePictures(tag, record, written.names)) {
        return {};
    }
    return written;
}

void mergeMp4Items(Mp4Atom &moov, Mp4Atom &saved, const Mp4WrittenItems &written)
{
    std::vector<Mp4Atom> fresh;
    if (const Mp4Atom *list = saved.find({"udta", "meta", "ilst"})) {
        std::copy_if(list->children.begin(), list->children.end(), std::back_inserter(fresh),
                     [&](const Mp4Atom &item) { return written.names.contains(item.name); });
    }
    std::vector<Mp4Atom> result;
    const auto take = [&](const QByteArray &name) {
        const auto item =
            std::find_if(fresh.begin(), fresh.end(), [&](const Mp4Atom &each) { return each.name == name; });
        if (item != fresh.end()) {
            result.push_back(*item);
            fresh.erase(item);
        }
    };
    Mp4Atom &list = itemList(moov, saved);
    for (const Mp4Atom &item : list.children) {
        const bool isGenreCode = item.name == genreCodeItem;
        const QByteArray name = isGenreCode ? QByteArray(genreItem) : item.name;
        if (written.isFresh ? belongsToEncoding(item) : !written.names.contains(name)) {
            result.push_back(item);
        } else {
            take(name);
        }
    }
    std::move(fresh.begin(), fresh.end(), std::back_inserter(result));
    list.children = std::move(result);
}

} // namespace kruv
