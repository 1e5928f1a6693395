// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/GenericTag.h"

#include "tags/LeadingNumber.h"
#include "tags/TagText.h"

#include <algorithm>
#include <array>

namespace kruv {

namespace {

struct TextAccess
{
    TagField field;
    TagLib::String (TagLib::Tag::*get)() const;
    void (TagLib::Tag::*set)(const TagLib::String &);
};

constexpr std::array textAccess{
    TextAccess{TagField::Title, &TagLib::Tag::title, &TagLib::Tag::setTitle},
    TextAccess{TagField::Artist, &TagLib::Tag::artist, &TagLib::Tag::setArtist},
    TextAccess{TagField::Album, &TagLib::Tag::album, &TagLib::Tag::setAlbum},
    TextAccess{TagField::Comment, &TagLib::Tag::comment, &TagLib::Tag::setComment},
    TextAccess{TagField::Genre, &TagLib::Tag::genre, &TagLib::Tag::setGenre},
};

struct NumberAccess
{
    TagField field;
    unsigned int (TagLib::Tag::*get)() const;
    void (TagLib::Tag::*set)(unsigned int);
};

constexpr NumberAccess yearAccess{TagField::Year, &TagLib::Tag::year, &TagLib::Tag::setYear};
constexpr NumberAccess trackAccess{TagField::Track, &TagLib::Tag::track, &TagLib::Tag::setTrack};

void readNumber(const TagLib::Tag &tag, TagsObject &record, const NumberAccess &access)
{
    const auto number = static_cast<int>((tag.*access.get)());
    if (number != 0) {
        record.setText(access.field, QString::number(number));
    }
}

/// A number that reads the same already is left alone: what is stored may say more ("3/12", a whole date).
void writeNumber(TagLib::Tag &tag, const TagLib::Tag &current, const TagsObject &record,
                 const NumberAccess &access, bool writeEmptyTags)
{
    const QString text = record.text(access.field);
    const auto number = static_cast<unsigned int>(std::max(0, leadingInt32(text)));
    if (isToBeWritten(text, writeEmptyTags) && (number == 0 || (current.*access.get)() != number)) {
        (tag.*access.set)(number);
    }
}

} // namespace

void readGenericTexts(const TagLib::Tag &tag, TagsObject &record)
{
    for (const TextAccess &access : textAccess) {
        const TagLib::String value = (tag.*access.get)();
        if (!value.isEmpty()) {
            record.setText(access.field, fromTagLibString(value));
        }
    }
}

void writeGenericText(TagLib::Tag &tag, const TagLib::Tag &current, const TagsObject &record, TagField field,
                      bool writeEmptyTags)
{
    const auto access = std::find_if(textAccess.begin(), textAccess.end(),
                                     [field](const TextAccess &row) { return row.field == field; });
    const QString text = record.text(field);
    const TagLib::String value = toTagLibString(text);
    if (isToBeWritten(text, writeEmptyTags) && (value.isEmpty() || (current.*access->get)() != value)) {
        (tag.*access->set)(value);
    }
}

void readGenericTag(const TagLib::Tag &tag, TagsObject &record)
{
    readGenericTexts(tag, record);
    readNumber(tag, record, yearAccess);
    readNumber(tag, record, trackAccess);
}

void writeGenericTag(TagLib::Tag &tag, const TagLib::Tag &current, const TagsObject &record,
                     bool writeEmptyTags)
{
    writeGenericText(tag, current, record, TagField::Title, writeEmptyTags);
    writeGenericText(tag, current, record, TagField::Artist, writeEmptyTags);
    writeNumber(tag, current, record, yearAccess, writeEmptyTags);
    writeGenericText(tag, current, record, TagField::Album, writeEmptyTags);
    writeNumber(tag, current, record, trackAccess, writeEmptyTags);
    writeGenericText(tag, current, record, TagField::Comment, writeEmptyTags);
    writeGenericText(tag, current, record, TagField::Genre, writeEmptyTags);
}

} // namespace kruv
