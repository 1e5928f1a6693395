// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/TagLibTagsHelper.h"

#include "tags/AiffChunks.h"
#include "tags/ApeTags.h"
#include "tags/BitmapData.h"
#include "tags/FlacPadding.h"
#include "tags/FlacTagHelper.h"
#include "tags/GenericTag.h"
#include "tags/Id3v2Tags.h"
#include "tags/ReadOnlyFileStream.h"
#include "tags/StagedFileStream.h"
#include "tags/XiphTags.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <aifffile.h>
#include <apefile.h>
#include <apetag.h>
#include <flacfile.h>
#include <id3v1tag.h>
#include <id3v2framefactory.h>
#include <mpegfile.h>
#include <opusfile.h>
#include <stdexcept>
#include <trueaudiofile.h>
#include <type_traits>
#include <vorbisfile.h>
#include <wavpackfile.h>

namespace kruv {

namespace {

/// Opens without reading the audio's properties. Some of the library's classes want a frame factory.
template <typename File> File openTagged(TagLib::IOStream &stream)
{
    constexpr bool readProperties = false;
    useUtf8InId3v2();
    if constexpr (std::is_same_v<File, TagLib::MPEG::File> || std::is_same_v<File, TagLib::FLAC::File>) {
        return File(&stream, TagLib::ID3v2::FrameFactory::instance(), readProperties);
    } else {
        return File(&stream, readProperties);
    }
}

/// What the library leaves out of a file that it opened.
template <typename File> void complete(File &file, TagLib::IOStream &stream)
{
    if constexpr (std::is_same_v<File, TagLib::FLAC::File>) {
        if (file.isValid() && file.hasXiphComment()) {
            takeLatin1Fields(stream, *file.xiphComment());
        }
    }
}

/// `read(file, record)` is called when the library can open the file.
template <typename File, typename Read>
TagLibTagsHelper::Record readTags(const TagLibTagsHelper &helper, const QString &path, Read read)
{
    auto record = std::make_shared<TagsObject>();
    helper.setBlankTags(*record);
    ReadOnlyFileStream stream(path);
    if (!stream.isOpen()) {
        return record;
    }
    File file = openTagged<File>(stream);
    if (file.isValid()) {
        complete(file, stream);
        read(file, *record);
    }
    return record;
}

/// The library takes nearly any bytes for a file of the kind it is told; what is no such file must not be
/// written to.
template <typename File> bool isSound(File &file, StagedFileStream &stream)
{
    if constexpr (std::is_same_v<File, TagLib::MPEG::File>) {
        return file.isValid() && file.firstFrameOffset() >= 0;
    } else if constexpr (std::is_same_v<File, TagLib::RIFF::AIFF::File>) {
        return file.isValid() && hasWholeAiffChunks(stream);
    } else {
        return file.isValid() && File::isSupported(&stream);
    }
}

/// `edit(file, stream)` changes the tags and saves them into the stream; false makes nothing of it.
template <typename File, typename Edit> bool writeTags(const QString &path, Edit edit)
{
    const QFileInfo info(path);
    if (!info.exists() || !info.isWritable()) {
        return false;
    }
    StagedFileStream stream(path);
    File file = openTagged<File>(stream);
    if (!stream.isOpen() || !isSound(file, stream)) {
        throw std::runtime_error(
            QCoreApplication::translate("Exceptions", "Unable to open the output file for tagging.")
                .toStdString());
    }
    complete(file, stream);
    return edit(file, stream) && stream.commit();
}

template <typename File>
TagLibTagsHelper::Record readApeTags(const TagLibTagsHelper &helper, const QString &path)
{
    return readTags<File>(helper, path, [](File &file, TagsObject &record) {
        readGenericTag(*file.tag(), record);
        if (const TagLib::APE::Tag *tag = file.APETag(false)) {
            readApe(*tag, record);
        }
    });
}

/// An ID3v1 tag that is there gets what it can hold.
template <typename File> void writeId3v1(File &file, const TagsObject &record, bool writeEmptyTags)
{
    if (TagLib::Tag *tag = file.ID3v1Tag(false)) {
        writeGenericTag(*tag, *tag, record, writeEmptyTags);
    }
}

template <typename File> bool writeApeTags(const QString &path, const TagsObject &record, bool writeEmptyTags)
{
    return writeTags<File>(path, [&](File &file, StagedFileStream &) {
        writeId3v1(file, record, writeEmptyTags);
        return writeApe(*file.APETag(true), record, writeEmptyTags) && file.save();
    });
}

/// The library has no APE tags in TrueAudio files.
TagLib::APE::Tag apeTagAt(TagLib::File &file, const ApeTagPlace &place)
{
    return place.length > 0 ? TagLib::APE::Tag(&file, place.footer) : TagLib::APE::Tag();
}

template <typename File>
TagLibTagsHelper::Record readOggTags(const TagLibTagsHelper &helper, const QString &path)
{
    return readTags<File>(helper, path,
                          [](File &file, TagsObject &record) { readOggXiph(*file.tag(), record); });
}

template <typename File> bool writeOggTags(const QString &path, const TagsObject &record, bool writeEmptyTags)
{
    return writeTags<File>(path, [&](File &file, StagedFileStream &) {
        return writeOggXiph(*file.tag(), record, writeEmptyTags) && file.save();
    });
}

} // namespace

TagLibTagsHelper::Record TagLibTagsHelper::tagsForMP3File(const QString &path) const
{
    using File = TagLib::MPEG::File;
    return readTags<File>(*this, path, [](File &file, TagsObject &record) {
        readId3v2(*file.tag(), *file.ID3v2Tag(true), record);
    });
}

TagLibTagsHelper::Record TagLibTagsHelper::tagsForAIFFFile(const QString &path) const
{
    using File = TagLib::RIFF::AIFF::File;
    return readTags<File>(
        *this, path, [](File &file, TagsObject &record) { readId3v2(*file.tag(), *file.tag(), record); });
}

TagLibTagsHelper::Record TagLibTagsHelper::tagsForFlacFile(const QString &path) const
{
    return readTags<TagLib::FLAC::File>(*this, path, readXiph);
}

TagLibTagsHelper::Record TagLibTagsHelper::tagsForAPEFile(const QString &path) const
{
    return readApeTags<TagLib::APE::File>(*this, path);
}

TagLibTagsHelper::Record TagLibTagsHelper::tagsForWavpackFile(const QString &path) const
{
    return readApeTags<TagLib::WavPack::File>(*this, path);
}

TagLibTagsHelper::Record TagLibTagsHelper::tagsForTTAFile(const QString &path) const
{
    using File = TagLib::TrueAudio::File;
    return readTags<File>(*this, path, [](File &file, TagsObject &record) {
        readId3v2(*file.tag(), *file.ID3v2Tag(true), record);
        readApe(apeTagAt(file, findApeTag(file)), record);
    });
}

TagLibTagsHelper::Record TagLibTagsHelper::tagsForVorbisFile(const QString &path) const
{
    return readOggTags<TagLib::Ogg::Vorbis::File>(*this, path);
}

TagLibTagsHelper::Record TagLibTagsHelper::tagsForOpusFile(const QString &path) const
{
    return readOggTags<TagLib::Ogg::Opus::File>(*this, path);
}

bool TagLibTagsHelper::writeTagsForVorbisFile(const QString &path, const TagsObject &record,
                                              bool writeEmptyTags) const
{
    return writeOggTags<TagLib::Ogg::Vorbis::File>(path, record, writeEmptyTags);
}

bool TagLibTagsHelper::writeTagsForOpusFile(const QString &path, const TagsObject &record,
                                            bool writeEmptyTags) const
{
    return writeOggTags<TagLib::Ogg::Opus::File>(path, record, writeEmptyTags);
}

bool TagLibTagsHelper::writeTagsForMP3File(const QString &path, const TagsObject &record,
                                           bool writeEmptyTags) const
{
    using File = TagLib::MPEG::File;
    return writeTags<File>(path, [&](File &file, StagedFileStream &) {
        const auto several = severalId3v2Values(*file.ID3v2Tag(true));
        if (writeEmptyTags) {
            file.strip();
        }
        TagLib::ID3v2::Tag &tag = *file.ID3v2Tag(true);
        writeId3v2(*file.tag(), tag, record, mp3Dialect, writeEmptyTags);
        writeSeveralId3v2Values(tag, several);
        return file.save();
    });
}

bool TagLibTagsHelper::writeTagsForAIFFFile(const QString &path, const TagsObject &record) const
{
    using File = TagLib::RIFF::AIFF::File;
    return writeTags<File>(path, [&](File &file, StagedFileStream &) {
        writeId3v2(*file.tag(), *file.tag(), record, aiffDialect, false);
        return file.save();
    });
}

bool TagLibTagsHelper::writeTagsForFLACFile(const QString &path, const TagsObject &record,
                                            bool writeEmptyTags) const
{
    using File = TagLib::FLAC::File;
    QString date;
    const bool saved = writeTags<File>(path, [&](File &file, StagedFileStream &stream) {
        const auto before = findFlacMetadata(stream);
        if (!writeXiph(file, record, writeEmptyTags, date) || !file.save()) {
            return false;
        }
        if (before) {
            restoreFlacPadding(stream, before->end);
        }
        return true;
    });
    if (saved) {
        FlacTagHelper().writeTagForFile(path, QStringLiteral("DATE"), date, writeEmptyTags);
    }
    return saved;
}

bool TagLibTagsHelper::writeTagsForAPEFile(const QString &path, const TagsObject &record,
                                           bool writeEmptyTags) const
{
    return writeApeTags<TagLib::APE::File>(path, record, writeEmptyTags);
}

bool TagLibTagsHelper::writeTagsForWavpackFile(const QString &path, const TagsObject &record,
                                               bool writeEmptyTags) const
{
    return writeApeTags<TagLib::WavPack::File>(path, record, writeEmptyTags);
}

bool TagLibTagsHelper::writeTagsForTTAFile(const QString &path, const TagsObject &record,
                                           bool writeEmptyTags) const
{
    using File = TagLib::TrueAudio::File;
    return writeTags<File>(path, [&](File &file, StagedFileStream &) {
        // The other tags that it has must not say something else.
        if (file.hasID3v2Tag()) {
            writeId3v2(*file.tag(), *file.ID3v2Tag(), record, mp3Dialect, writeEmptyTags);
        }
        writeId3v1(file, record, writeEmptyTags);
        if ((file.hasID3v2Tag() || file.hasID3v1Tag()) && !file.save()) {
            return false;
        }
        const ApeTagPlace place = findApeTag(file);
        TagLib::APE::Tag tag = apeTagAt(file, place);
        if (!writeApe(tag, record, writeEmptyTags)) {
            return false;
        }
        file.insert(tag.isEmpty() ? TagLib::ByteVector() : tag.render(),
                    static_cast<unsigned long>(place.start), static_cast<unsigned long>(place.length));
        return true;
    });
}

void TagLibTagsHelper::setBlankTags(TagsObject &record) const
{
    for (std::size_t field = 0; field < tagFieldCount; ++field) {
        record.setText(static_cast<TagField>(field), QStringLiteral(""));
    }
    record.setAlbumArt({});
}

} // namespace kruv
