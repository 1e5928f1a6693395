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

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStorageInfo>

#include <mp4file.h>
#include <stdexcept>
#include <tfilestream.h>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(mp4Log, "kruv.tags.mp4", QtWarningMsg)

/// Brings the items that were saved into `savedStream` into the file itself, compactly, in one step: a new
/// file beside the old one takes its place. False, with the file as it was, when that can't be done.
bool writeCompactly(const QString &path, StagedFileStream &savedStream, const Mp4WrittenItems &written)
{
    try {
        StagedFileStream stream(path);
        Mp4File file(stream);
        Mp4File saved(savedStream);
        mergeMp4Items(file.moov(), saved.moov(), written);
        file.optimize();
        return stream.commitToNewFile();
    } catch (const Mp4Error &error) {
        qCInfo(mp4Log, "%s: %s", qUtf8Printable(path), error.what());
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
        throw std::runtime_error("Unable to open the file for reading.");
    }
    readMp4Tag(*file.tag(), *record);
    try {
        const QString genre = readMp4Genre(Mp4File(stream).moov());
        record->setGenreText(genre.isNull() ? QStringLiteral("") : genre);
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
    StagedFileStream stream(path);
    constexpr bool readProperties = false;
    TagLib::MP4::File file(&stream, readProperties);
    if (!stream.isOpen() || !file.isValid()) {
        throw std::runtime_error("Unable to open the output file for tagging.");
    }
    const auto written = writeMp4Tag(*file.tag(), record, writeEmptyTags);
    if (!written || !file.save()) {
        return false;
    }
    if (writeCompactly(path, stream, *written)) {
        return true;
    }
    qCWarning(mp4Log, "Unable to optimize %s file", qUtf8Printable(path));
    return stream.commit();
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
    const QFileInfo info(target);
    if (QStorageInfo(info.path()).bytesAvailable() < info.size() + roomForTags) {
        qCWarning(mp4Log, "No room to mark %s as gapless", qUtf8Printable(path));
        return;
    }
    const QFile::Permissions before = QFile::permissions(target);
    NSTaskWrapperSync tool(
        toolPath(QStringLiteral("AtomicParsley")),
        {target, QStringLiteral("--overWrite"), QStringLiteral("--gapless"), QStringLiteral("--true")});
    tool.setEnvironmentVariable(QStringLiteral("AP_PADDING"), QStringLiteral("\"DEFAULT_PAD=0:MAX_PAD=0\""));
    tool.runTask();
    qCInfo(mp4Log, "%s", qUtf8Printable(tool.output()));
    if (QFile::permissions(target) != before) {
        QFile::setPermissions(target, before);
    }
}

} // namespace kruv
