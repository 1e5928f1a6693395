// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/FlacTagHelper.h"

#include "platform/Resources.h"
#include "tags/EditLog.h"
#include "tags/FlacMetadataCopy.h"
#include "tags/LeadingNumber.h"
#include "tasks/NSTaskWrapperSync.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <memory>

namespace kruv {

namespace {

Q_LOGGING_CATEGORY(flacTagLog, "kruv.tags.flac", QtWarningMsg)

QString runMetaflac(const QStringList &switches, const QString &path)
{
    NSTaskWrapperSync metaflac(toolPath(QStringLiteral("metaflac")), switches + QStringList{path});
    metaflac.runTask();
    return metaflac.output();
}

/// Where the tool has to rewrite the file it puts a new one in its place, which would turn a symbolic link
/// into a file and reset the access rights.
void editWithMetaflac(const QStringList &switches, const QString &path)
{
    const QFileInfo info(path);
    const QString target = info.isSymLink() ? info.canonicalFilePath() : path;
    const QFile::Permissions before = QFile::permissions(target);
    EditLog *log = EditLog::current();
    const auto copy = log ? std::make_unique<FlacMetadataCopy>(target) : nullptr;
    runMetaflac(switches, target);
    if (log) {
        log->add(copy->wayBack());
    }
    if (QFile::permissions(target) != before) {
        QFile::setPermissions(target, before);
    }
}

} // namespace

void FlacTagHelper::writeTagForFile(const QString &path, const QString &tagKey, const QString &tagValue,
                                    bool writeEmptyTags) const
{
    if (!writeEmptyTags && tagValue.isEmpty()) {
        return;
    }
    removeTagForFile(path, tagKey);
    editWithMetaflac({QStringLiteral("--set-tag=%1=%2").arg(tagKey, tagValue)}, path);
}

void FlacTagHelper::removeTagForFile(const QString &path, const QString &tagKey) const
{
    editWithMetaflac({QStringLiteral("--remove-tag=%1").arg(tagKey)}, path);
}

AudioFormatObject FlacTagHelper::getFormatInfo(const QString &path) const
{
    AudioFormatObject format;
    format.sampleRate = leadingInt32(runMetaflac({QStringLiteral("--show-sample-rate")}, path));
    format.channels = leadingInt32(runMetaflac({QStringLiteral("--show-channels")}, path));
    format.bitsPerChannel = leadingInt32(runMetaflac({QStringLiteral("--show-bps")}, path));
    format.totalSamples = leadingInt64(runMetaflac({QStringLiteral("--show-total-samples")}, path));
    return format;
}

void FlacTagHelper::removePadding(const QString &path) const
{
    qCInfo(flacTagLog, "Removing flac padding from %s", qUtf8Printable(path));
    editWithMetaflac({QStringLiteral("--dont-use-padding"), QStringLiteral("--remove"),
                      QStringLiteral("--block-type=PADDING")},
                     path);
}

} // namespace kruv
