// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"
#include "tasks/KruvTask.h"

#include <QCoreApplication>

#include <atomic>
#include <memory>

namespace kruv {

/// Writes a tag record into one file. Jobs for the same file write one after the other, in the order in which
/// they were started.
class WriteTagsTask : public KruvTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::WriteTagsTask)
public:
    /// `type` is the file's upper-case extension; a file of a type that has no writer is left as it is.
    WriteTagsTask(TaskCompletionSink *queue, const QString &fileName, const QString &type,
                  std::shared_ptr<const TagsObject> tags, bool writeEmptyTags);

    /// The file keeps no room for later tags, where its type knows such. Before the start.
    void setWithoutPadding(bool withoutPadding) { m_withoutPadding = withoutPadding; }

    void startTask() override;
    void stopTask() override;
    QString inputPath() const override { return m_fileName; }
    std::optional<Receipt> receipt() const override { return m_receipt; }

protected:
    void foresee() override;
    const QString &fileName() const { return m_fileName; }
    bool writesEmptyTags() const { return m_writeEmptyTags; }
    /// What is to be written. Called when the file's turn has come, on a pool thread; what it throws fails
    /// the job.
    virtual std::shared_ptr<const TagsObject> tags() { return m_tags; }

private:
    using Written = std::shared_ptr<std::atomic<bool>>;

    void doStartTask();
    void write();
    void failToWrite(const QString &reason);

    const QString m_fileName;
    const QString m_type;
    const std::shared_ptr<const TagsObject> m_tags;
    const bool m_writeEmptyTags;
    bool m_withoutPadding = false;
    const Written m_written;
    Written m_before; // of the job that writes this file before
    std::optional<Receipt> m_receipt;
};

} // namespace kruv
