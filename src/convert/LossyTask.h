// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeTask.h"

#include <initializer_list>

namespace kruv {

class TagsObject;

/// What the jobs of the lossy tab share, beyond the steps of a conversion: which originals they may delete,
/// and that they do it only where the output is as long as its source.
class LossyTask : public TranscodeTask
{
protected:
    LossyTask(TaskCompletionSink *queue, const QString &fileName, const QString &folder,
              const Recipe &recipe);

    void doStartTask() override;
    void finish() override;

    /// The source's file type.
    const QString &fileType() const { return m_fileType; }
    /// The file that is written: the output, or what will take the place of a file that is there.
    virtual QString writtenFile() const { return outFile(); }
    /// Whether the source goes when the job succeeds.
    virtual bool losesSource() const { return deleteOriginal(); }
    /// Whether an original of this type is deleted where that was asked for.
    virtual bool deletesSourceType() const;

    /// The tags of a source of the given types, with the status line shown meanwhile; null for other types.
    std::shared_ptr<TagsObject> readTags(std::initializer_list<TaggedSource> sources);
    /// Runs an encoder of the resources folder that writes writtenFile(). What a failed run leaves is
    /// removed.
    void runEncoder(const char *tool, const QStringList &arguments, const OutputReader &read);

private:
    void keepSourceOfShortOutput();

    const QString m_fileType;
};

} // namespace kruv
