// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/Id3v2Tags.h"

#include "tags/GenericTag.h"
#include "tags/MoreTags.h"
#include "tags/TagText.h"

#include <algorithm>
#include <array>
#include <attachedpictureframe.h>
#include <commentsframe.h>
#include <id3v2framefactory.h>
#include <id3v2header.h>
#include <id3v2synchdata.h>
#include <memory>
#include <mutex>
#include <textidentificationframe.h>
#include <unknownframe.h>

namespace kruv {

namespace {

using TagLib::ByteVector;
using TagLib::String;
namespace ID3v2 = TagLib::ID3v2;

/// A number with its total, in one frame as "3/12".
struct PairFrame
{
    const char *frame;
    TagField number;
    TagField total;
};
constexpr PairFrame trackPair{"TRCK", TagField::Track, TagField::TrackTotal};
constexpr PairFrame discPair{"TPOS", TagField::Disc, TagField::DiscTotal};

bool hasFrame(const ID3v2::Tag &tag, const char *id)
{
    return !tag.frameList(id).isEmpty();
}

/// Text of the first frame of that ID; empty, never null, without one.
QString frameText(const ID3v2::Tag &tag, const char *id)
{
    const ID3v2::FrameList &frames = tag.frameList(id);
    return frames.isEmpty() ? QStringLiteral("") : fromTagLibString(frames.front()->toString());
}

void readNumberPair(const ID3v2::Tag &tag, const PairFrame &pair, TagsObject &record)
{
    const QString text = frameText(tag, pair.frame);
    const qsizetype slash = text.indexOf(u'/');
    if (slash >= 0) {
        record.setText(pair.number, text.left(slash));
        record.setText(pair.total, text.mid(slash + 1));
    } else if (!text.isEmpty()) {
        record.setText(pair.number, text);
    }
}

void readYearAndDayMonth(const QString &year, const QString &dayMonth, TagsObject &record)
{
    record.setYearText(year);
    if (dayMonth.size() == 4) {
        record.setDayText(dayMonth.left(2));
        record.setMonthText(dayMonth.mid(2));
    }
}

/// Reading a tag older than version 2.4, the library turns TYER into TDRC and joins TDAT and TIME to it, as
/// in "2004-05-06T12:30". This takes the year, day and month apart again, as they stand.
void readJoinedDate(const QString &text, TagsObject &record)
{
    const bool joined = text.size() >= 10 && text[4] == u'-' && text[7] == u'-';
    readYearAndDayMonth(joined ? text.left(4) : text,
                        joined ? QString(text.mid(8, 2) + text.mid(5, 2)) : QString(), record);
}

void readId3v2Date(const ID3v2::Tag &tag, TagsObject &record)
{
    if (!hasFrame(tag, "TDRC")) {
        readYearAndDayMonth(frameText(tag, "TYER"), frameText(tag, "TDAT"), record);
        return;
    }
    const QString text = frameText(tag, "TDRC");
    if (tag.header()->majorVersion() >= 4) {
        readDateOrKeep(text, record);
    } else if (!readDate(text, record)) {
        readJoinedDate(text, record);
    }
}

void readPictures(const ID3v2::Tag &tag, TagsObject &record)
{
    std::vector<TypedPicture> pictures;
    for (const ID3v2::Frame *each : tag.frameList("APIC")) {
        if (const auto *frame = dynamic_cast<const ID3v2::AttachedPictureFrame *>(each)) {
            pictures.push_back({static_cast<PictureType>(frame->type()),
                                fromTagLibString(frame->description()),
                                std::make_shared<const AlbumArt>(fromTagLibBytes(frame->picture()))});
        }
    }
    record.setPictures(std::move(pictures));
}

/// Texts that may be of several values, one frame each.
struct TextFrame
{
    TagField field;
    const char *id;
};
constexpr std::array textFrames{
    TextFrame{TagField::Title, "TIT2"},       TextFrame{TagField::Artist, "TPE1"},
    TextFrame{TagField::AlbumArtist, "TPE2"}, TextFrame{TagField::Album, "TALB"},
    TextFrame{TagField::Genre, "TCON"},       TextFrame{TagField::Composer, "TCOM"},
};

QStringList frameValues(const ID3v2::Tag &tag, const char *id)
{
    const ID3v2::FrameList &frames = tag.frameList(id);
    const auto *frame =
        frames.isEmpty() ? nullptr : dynamic_cast<const ID3v2::TextIdentificationFrame *>(frames.front());
    return frame ? fromTagLibList(frame->fieldList()) : QStringList();
}

/// What is shown is in the record already; where it is several values joined, they are told apart.
void readSeveralValues(const ID3v2::Tag &tag, TagsObject &record)
{
    for (const TextFrame &row : textFrames) {
        const QStringList values = frameValues(tag, row.id);
        if (values.size() > 1 && values.join(u' ') == record.text(row.field)) {
            record.setValues(row.field, values);
        }
    }
}

/// In a tag of version 2.2 the library leaves the day and month apart from the date, and drops them on
/// saving.
void joinDayAndMonth(ID3v2::Tag &tag)
{
    const ID3v2::FrameList dayMonths = tag.frameList("TDA");
    const String year = toTagLibString(frameText(tag, "TDRC"));
    if (tag.header()->majorVersion() != 2 || dayMonths.isEmpty() || year.size() != 4) {
        return;
    }
    const auto *frame = dynamic_cast<const ID3v2::UnknownFrame *>(dayMonths.front());
    if (frame == nullptr || frame->data().size() < 5 || frame->data()[0] > String::UTF8 ||
        frame->data()[0] < 0) {
        return;
    }
    const String dayMonth(frame->data().mid(1), static_cast<String::Type>(frame->data()[0]));
    if (dayMonth.size() == 4) {
        tag.frameList("TDRC").front()->setText(year + "-" + dayMonth.substr(2) + "-" + dayMonth.substr(0, 2));
    }
}

/// Puts one frame of that ID in place of all; an empty text leaves none.
void replaceFrame(ID3v2::Tag &tag, const char *id, const QString &text, String::Type encoding)
{
    tag.removeFrames(id);
    if (!text.isEmpty()) {
        auto frame = std::make_unique<ID3v2::TextIdentificationFrame>(id, encoding);
        frame->setText(toTagLibString(text));
        tag.addFrame(frame.release());
    }
}

void writeFrame(ID3v2::Tag &tag, const char *id, const QString &text, String::Type encoding,
                bool writeEmptyTags)
{
    if (isToBeWritten(text, writeEmptyTags) && (text.isEmpty() || frameText(tag, id) != text)) {
        replaceFrame(tag, id, text, encoding);
    }
}

void writeNumberPair(ID3v2::Tag &tag, const PairFrame &pair, const TagsObject &record, String::Type encoding,
                     bool writeEmptyTags)
{
    const QString number = record.text(pair.number);
    const QString total = record.text(pair.total);
    if (isToBeWritten(number, writeEmptyTags)) {
        const QString text = total.isEmpty() ? number : QStringLiteral("%1/%2").arg(number, total);
        replaceFrame(tag, pair.frame, text, encoding);
    }
}

/// A file must not keep two dates, so the frames of the other style go too.
void writeId3v2Date(ID3v2::Tag &tag, const TagsObject &record, const Id3v2Dialect &dialect,
                    bool writeEmptyTags)
{
    const QString year = record.yearText();
    const QString month = record.monthText();
    const QString day = record.dayText();
    if (isToBeWritten(year, writeEmptyTags)) {
        tag.removeFrames("TDRC");
        tag.removeFrames("TYER");
        if (dialect.dateInOneFrame) {
            tag.removeFrames("TDAT");
            replaceFrame(tag, "TDRC", joinedDate(record), String::Latin1);
        } else {
            replaceFrame(tag, "TYER", year, dialect.textEncoding);
        }
    }
    if (year.isEmpty() && !joinedDate(record).isEmpty()) {
        replaceFrame(tag, "TDRC", joinedDate(record), String::Latin1);
    }
    if (!dialect.dateInOneFrame && !month.isEmpty() && !day.isEmpty()) {
        replaceFrame(tag, "TDAT", day + month, dialect.textEncoding);
    }
}

/// The library writes the comment over the first comment frame there is, which may be a player's own
/// ("iTunNORM"). The person's comment is the one without a description.
void makeRoomForComment(ID3v2::Tag &tag)
{
    const ID3v2::FrameList &frames = tag.frameList("COMM");
    const bool hasOwn = std::any_of(frames.begin(), frames.end(), [](const ID3v2::Frame *frame) {
        const auto *comment = dynamic_cast<const ID3v2::CommentsFrame *>(frame);
        return comment != nullptr && comment->description().isEmpty();
    });
    if (!frames.isEmpty() && !hasOwn) {
        tag.addFrame(std::make_unique<ID3v2::CommentsFrame>(String::UTF8).release());
    }
}

void writeComment(TagLib::Tag &generic, ID3v2::Tag &tag, const TagsObject &record, bool writeEmptyTags)
{
    const QString comment = record.commentText();
    if (!comment.isEmpty() && fromTagLibString(tag.comment()) != comment) {
        makeRoomForComment(tag);
    }
    writeGenericText(generic, tag, record, TagField::Comment, writeEmptyTags);
}

/// Those very bytes, as when a record goes back into the file it came from.
bool holdsPicture(const ID3v2::Tag &tag, const AlbumArt &art)
{
    const QByteArray &bytes = art.encoded();
    const ID3v2::FrameList &frames = tag.frameList("APIC");
    return std::any_of(frames.begin(), frames.end(), [&bytes](const ID3v2::Frame *frame) {
        const auto *picture = dynamic_cast<const ID3v2::AttachedPictureFrame *>(frame);
        return picture && fromTagLibBytes(picture->picture()) == bytes;
    });
}

void addOtherPictures(ID3v2::Tag &tag, const TagsObject &record)
{
    for (const TypedPicture &other : record.otherPictures()) {
        if (holdsPicture(tag, *other.art)) {
            continue;
        }
        auto frame = std::make_unique<ID3v2::AttachedPictureFrame>();
        frame->setMimeType(other.art->mimeType().constData());
        frame->setPicture(toTagLibBytes(other.art->encoded()));
        frame->setType(static_cast<ID3v2::AttachedPictureFrame::Type>(other.type));
        frame->setDescription(toTagLibString(other.description));
        tag.addFrame(frame.release());
    }
}

/// Other pictures stay beside the new one.
void writePicture(ID3v2::Tag &tag, const TagsObject &record, bool writeEmptyTags)
{
    const auto art = record.picture();
    const QByteArray png = art ? art->png().bytes : QByteArray();
    if (png.isEmpty()) {
        if (writeEmptyTags) {
            tag.removeFrames("APIC");
        }
        return;
    }
    if (holdsPicture(tag, *art)) {
        return;
    }
    auto frame = std::make_unique<ID3v2::AttachedPictureFrame>();
    frame->setMimeType("image/png");
    frame->setPicture(ByteVector(png.constData(), static_cast<unsigned int>(png.size())));
    tag.addFrame(frame.release());
}

/// Saving as version 2.4, the library drops frames that only older versions list. Those that hold what
/// someone set (volume, equaliser, recording dates) are carried over as they are.
void keepRetiredFrames(ID3v2::Tag &tag)
{
    if (tag.header()->majorVersion() != 3) {
        return;
    }
    for (const char *id : {"RVAD", "EQUA", "TRDA"}) {
        const ID3v2::FrameList frames = tag.frameList(id);
        for (ID3v2::Frame *frame : frames) {
            const auto *unknown = dynamic_cast<const ID3v2::UnknownFrame *>(frame);
            if (unknown == nullptr) {
                continue;
            }
            const ByteVector content = unknown->data();
            const ByteVector header =
                ByteVector(id, 4) + ID3v2::SynchData::fromUInt(content.size()) + ByteVector(2, '\0');
            tag.removeFrame(frame);
            tag.addFrame(std::make_unique<ID3v2::UnknownFrame>(header + content).release());
        }
    }
}

} // namespace

void useUtf8InId3v2()
{
    static std::once_flag once;
    std::call_once(once, [] { ID3v2::FrameFactory::instance()->setDefaultTextEncoding(String::UTF8); });
}

void readId3v2(const TagLib::Tag &generic, ID3v2::Tag &tag, TagsObject &record)
{
    joinDayAndMonth(tag);
    readGenericTexts(generic, record);
    record.setComposerText(frameText(tag, "TCOM"));
    record.setAlbumArtistText(frameText(tag, "TPE2"));
    readNumberPair(tag, discPair, record);
    readNumberPair(tag, trackPair, record);
    readId3v2Date(tag, record);
    readSeveralValues(tag, record);
    readPictures(tag, record);
    record.setPartOfFile(MoreTags::isIn(tag));
}

QMap<TagField, QStringList> severalId3v2Values(const ID3v2::Tag &tag)
{
    QMap<TagField, QStringList> several;
    for (const TextFrame &row : textFrames) {
        if (const QStringList values = frameValues(tag, row.id); values.size() > 1) {
            several.insert(row.field, values);
        }
    }
    return several;
}

void writeSeveralId3v2Values(ID3v2::Tag &tag, const QMap<TagField, QStringList> &several)
{
    for (const TextFrame &row : textFrames) {
        const QStringList values = several.value(row.field);
        const QStringList written = frameValues(tag, row.id);
        if (values.size() > 1 && written != values && written.join(u' ') == values.join(u' ')) {
            dynamic_cast<ID3v2::TextIdentificationFrame &>(*tag.frameList(row.id).front())
                .setText(toTagLibList(values));
        }
    }
}

void writeId3v2(TagLib::Tag &generic, ID3v2::Tag &tag, const TagsObject &record, const Id3v2Dialect &dialect,
                bool writeEmptyTags)
{
    const String::Type encoding = dialect.textEncoding;
    keepRetiredFrames(tag);
    joinDayAndMonth(tag);
    writeGenericText(generic, tag, record, TagField::Title, writeEmptyTags);
    writeGenericText(generic, tag, record, TagField::Album, writeEmptyTags);
    writeGenericText(generic, tag, record, TagField::Artist, writeEmptyTags);
    writeFrame(tag, "TPE2", record.albumArtistText(), encoding, writeEmptyTags);
    writeFrame(tag, "TCOM", record.composerText(), encoding, writeEmptyTags);
    writeGenericText(generic, tag, record, TagField::Genre, writeEmptyTags);
    writeId3v2Date(tag, record, dialect, writeEmptyTags);
    writeComment(generic, tag, record, writeEmptyTags);
    writeNumberPair(tag, trackPair, record, encoding, writeEmptyTags);
    writeNumberPair(tag, discPair, record, encoding, writeEmptyTags);
    QMap<TagField, QStringList> several;
    for (const TextFrame &row : textFrames) {
        several.insert(row.field, record.values(row.field));
    }
    writeSeveralId3v2Values(tag, several);
    writePicture(tag, record, writeEmptyTags);
    addOtherPictures(tag, record);
}

} // namespace kruv
