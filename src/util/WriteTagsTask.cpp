// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/WriteTagsTask.h"

#include "base/PathNames.h"
#include "formats/TagFormats.h"
#include "platform/MainThread.h"
#include "tags/EditLog.h"

#include <QFileInfo>
#include <QHash>

#include <exception>
#include <stdexcept>
#include <utility>

namespace kruv {

namespace {

/// The last job started for each file that is being written. Main thread only.
QHash<QString, std::shared_ptr<std::atomic<bool>>> &lastWriters()
{
    static QHash<QString, std::shared_ptr<std::atomic<bool>>> writers;
    return writers;
}

/// Why a file may have been refused.
QString refusal(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return WriteTagsTask::tr("The file is not there any more.");
    }
    return info.isWritable()
               ? WriteTagsTask::tr("Its disk may be full, or a picture or text too large for it.")
               : WriteTagsTask::tr("The file may not be written to.");
}

} // namespace

WriteTagsTask::WriteTagsTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                             std::shared_ptr<const TagsObject> tags, bool writeEmptyTags)
    : KruvTask(queue)
    , m_fileName(fileName)
    , m_type(type)
    , m_tags(std::move(tags))
    , m_writeEmptyTags(writeEmptyTags)
    , m_written(std::make_shared<std::atomic<bool>>(false))
{
    results()->setHasResults(false);
    setTitle(PathNames::lastPathComponent(fileName));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void WriteTagsTask::foresee()
{
    const QFileInfo file(m_fileName);
    if (!file.isFile()) {
        throw std::runtime_error(tr("%1 is missing or is no file.").arg(m_fileName).toStdString());
    }
    if (!file.isReadable() || !file.isWritable()) {
        throw std::runtime_error(tr("%1 may not be changed by you.").arg(m_fileName).toStdString());
    }
}

void WriteTagsTask::startTask()
{
    KruvTask::startTask();
    Written &last = lastWriters()[m_fileName];
    m_before = std::exchange(last, m_written);
    runInBackground([this] {
        doStartTask();
        *m_written = true;
        m_written->notify_all();
    });
}

void WriteTagsTask::doStartTask()
{
    if (m_before) {
        m_before->wait(false);
    }
    if (!startFinishing() || !TagFormats::isWritten(m_type)) {
        return;
    }
    setTopTextFieldString(tr("Writing %1 tags").arg(m_type));
    publish(&KruvTask::setTopTextFieldValue);
    try {
        write();
    } catch (const std::exception &failure) {
        failToWrite(QString::fromUtf8(failure.what()));
    }
}

void WriteTagsTask::write()
{
    const auto before = FileStamp::of(m_fileName);
    const EditLog log([&](const QByteArray &wayBack, qint64 size) {
        if (before) {
            foretell({.sources = {{m_fileName, *before}},
                      .outputs = {{m_fileName, {.size = size}}},
                      .wayBack = wayBack});
        }
    });
    const auto record = tags();
    if (!TagFormats::write(m_type, m_fileName, *record, m_writeEmptyTags)) {
        failToWrite(refusal(m_fileName));
    } else if (m_withoutPadding) {
        TagFormats::removePadding(m_type, m_fileName);
    }
    if (const auto after = FileStamp::of(m_fileName); before && after && *after != *before) {
        m_receipt = Receipt{
            .sources = {{m_fileName, *before}}, .outputs = {{m_fileName, *after}}, .wayBack = log.packed()};
    }
}

void WriteTagsTask::failToWrite(const QString &reason)
{
    // A set of thousands is worth showing when one of them failed.
    results()->setHasResults(true);
    const QString what = tr("Error writing tags to file:\n%1").arg(m_fileName);
    fail(reason.isEmpty() ? what : what + u'\n' + reason);
}

void WriteTagsTask::stopTask()
{
    // In one go on the main thread: jobs of a set that end at nearly the same time must not each find the set
    // done and show its results.
    MainThread::run([this] {
        if (*m_written && lastWriters().value(m_fileName) == m_written) {
            lastWriters().remove(m_fileName);
        }
        KruvTask::stopTask();
        notifyQueue();
    });
}

} // namespace kruv
