// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/AACTagsHelper.h"

#include "platform/Resources.h"
#include "tags/Mp4File.h"
#include "tags/Mp4Tags.h"
#include "tags/StagedFileStream.h"
#include "tags/TagLibTagsHelper.h"
#include "tags/TagText.h"
#include "tasks/NSTaskWrapperSync.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <mp4file.h>
#include <optional>
#include <stdexcept>
#include <sys/statvfs.h>
#include <tbytevectorstream.h>
#include <tfilestream.h>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(mp4Log, "kruv.tags.mp4", QtWarningMsg)

using Store = void (Mp4File::*)();

/// Whether so much more can be written where a file lies; true where the file system does not tell.
bool hasRoomFor(qint64 bytes, const QString &path)
{
    struct statvfs volume = {};
    if (statvfs(QFile::encodeName(path).constData(), &volume) != 0 || volume.f_blocks == 0) {
        return true;
    }
    return volume.f_bavail > static_cast<std::uint64_t>(bytes) / std::max(volume.f_frsize, 1UL);
}

/// How much media a file has; nothing where its atoms don't end where it ends.
std::optional<quint64> mediaSize(const QString &path)
{
    constexpr int shortHeader = 8;
    constexpr int longHeader = 16;
    QFile file(path);
    quint64 media = 0;
    quint64 offset = 0;
    const auto length = static_cast<quint64>(QFileInfo(path).size());
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    while (offset < length) {
        const QByteArray header =
            file.seek(static_cast<qint64>(offset)) ? file.read(longHeader) : QByteArray();
        if (header.size() < shortHeader) {
            return std::nullopt;
        }
        quint64 size = qFromBigEndian<quint32>(header.constData());
        if (size == 1 && header.size() == longHeader) {
            size = qFromBigEndian<quint64>(header.constData() + shortHeader);
        }
        if (size < shortHeader || size > length - offset) {
            return std::nullopt;
        }
        media += header.mid(4, 4) == "mdat" ? size : 0;
        offset += size;
    }
    return media;
}

/// The index that the tag library makes of the file's items and the record, in a scratch file of its own that
/// has no media: with media the library would also go through every chunk.
bool writeItems(Mp4Atom &moov, const TagsObject &record, bool writeEmptyTags)
{
    Mp4Atom scratchIndex = Mp4Atom::container("moov");
    if (const Mp4Atom *metadata = moov.find({"udta", "meta"})) {
        scratchIndex.add(Mp4Atom::container("udta")).add(*metadata);
    }
    const QByteArray bytes = scratchIndex.toBytes();
    TagLib::ByteVectorStream scratch({bytes.constData(), static_cast<unsigned int>(bytes.size())});
    constexpr bool readProperties = false;
    TagLib::MP4::File file(&scratch, readProperties);
    const auto written = file.isValid() ? writeMp4Tag(*file.tag(), record, writeEmptyTags) : std::nullopt;
    if (!written || !file.save()) {
        return false;
    }
    mergeMp4Items(moov, Mp4File(scratch).moov(), *written);
    return true;
}

/// Writes the record into the file's index and that into the stream, which isn't committed. False, with the
/// stream unchanged, when that can't be done.
bool stage(StagedFileStream &stream, const TagsObject &record, bool writeEmptyTags, Store store)
{
    try {
        Mp4File file(stream);
        if (!writeItems(file.moov(), record, writeEmptyTags)) {
            return false;
        }
        (file.*store)();
        return true;
    } catch (const Mp4Error &error) {
        qCInfo(mp4Log, "%s: %s", stream.name(), error.what());
        return false;
    }
}

bool isMp4(StagedFileStream &stream)
{
    try {
        return stream.isOpen() && Mp4File(stream).moov().isContainer;
    } catch (const Mp4Error &) {
        return false;
    }
}

} // namespace

AACTagsHelper::Record AACTagsHelper::tagsForFile(const QString &path) const
{
    auto record = std::make_shared<TagsObject>();
    setBlankTags(*record);
    if (!QFileInfo::exists(path)) {
        return record;
    }
    constexpr bool openReadOnly = true;
    constexpr bool readProperties = false;
    // Opening anything else than a file could wait for ever, as for a pipe.
    TagLib::FileStream stream(QFile::encodeName(QFileInfo(path).isFile() ? path : QString()).constData(),
                              openReadOnly);
    const TagLib::MP4::File file(&stream, readProperties);
    if (!stream.isOpen() || !file.isValid()) {
        throw std::runtime_error(
            QCoreApplication::translate("Exceptions", "Unable to open the file for reading.").toStdString());
    }
    readMp4Tag(*file.tag(), *record);
    try {
        const QString genre = readMp4Genre(Mp4File(stream).moov());
        if (record->values(TagField::Genre).size() < 2) {
            record->setGenreText(genre.isNull() ? QStringLiteral("") : genre);
        }
    } catch (const Mp4Error &error) {
        qCInfo(mp4Log, "%s: %s", qUtf8Printable(path), error.what());
        record->setGenreText(fromTagLibString(file.tag()->genre()));
    }
    return record;
}

bool AACTagsHelper::writeTagsForFile(const QString &path, const TagsObject &record, bool writeEmptyTags,
                                     bool /*encoding*/) const
{
    const QFileInfo info(path);
    if (!info.exists() || !info.isWritable()) {
        return false;
    }
    StagedFileStream compact(path);
    if (!isMp4(compact)) {
        throw std::runtime_error(
            QCoreApplication::translate("Exceptions", "Unable to open the output file for tagging.")
                .toStdString());
    }
    // In one step: a new file beside the old one takes its place.
    if (stage(compact, record, writeEmptyTags, &Mp4File::optimize) && compact.commitToNewFile()) {
        return true;
    }
    qCWarning(mp4Log, "Unable to optimize %s file", qUtf8Printable(path));
    StagedFileStream stream(path);
    return stage(stream, record, writeEmptyTags, &Mp4File::storeIndex) && stream.commit();
}

void AACTagsHelper::setBlankTags(TagsObject &record) const
{
    TagLibTagsHelper().setBlankTags(record);
}

void AACTagsHelper::makeGapless(const QString &path) const
{
    // The tool replaces the file by a new one, which would turn a symbolic link into a file and reset the
    // access rights; and on a full disk it never ends.
    const QString target = QFileInfo(path).canonicalFilePath();
    constexpr qint64 roomForTags = 1 << 20;
    if (!hasRoomFor(QFileInfo(target).size() + roomForTags, target)) {
        qCInfo(mp4Log, "No room to mark %s as gapless", qUtf8Printable(path));
        return;
    }
    const QFile::Permissions before = QFile::permissions(target);
    const auto media = mediaSize(target);
    NSTaskWrapperSync tool(
        toolPath(QStringLiteral("AtomicParsley")),
        {target, QStringLiteral("--overWrite"), QStringLiteral("--gapless"), QStringLiteral("--true")});
    tool.setEnvironmentVariable(QStringLiteral("AP_PADDING"), QStringLiteral("\"DEFAULT_PAD=0:MAX_PAD=0\""));
    tool.runTask();
    qCInfo(mp4Log, "%s", qUtf8Printable(tool.output()));
    // It tells nothing of writes that fail.
    if (media && mediaSize(target) != media) {
        throw std::runtime_error(QCoreApplication::translate(
                                     "Exceptions",
                                     "The file was damaged while it was marked as gapless; its disk may be "
                                     "full. Free some space and try again.")
                                     .toStdString());
    }
    if (QFile::permissions(target) != before) {
        QFile::setPermissions(target, before);
    }
}

} // namespace kruv
