// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "lossy/LossyTask.h"
#include "tasks/TemporaryFile.h"

#include <optional>

namespace kruv {

/// What the two jobs that make .m4a files share: the output of an Apple Lossless song.m4a beside itself is
/// made under a temporary name and takes the source's place when it is complete.
class EncodeM4ATask : public LossyTask
{
protected:
    /// `overwriteM4a`: an output that is there already may be replaced.
    EncodeM4ATask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                  const Recipe &recipe, std::int32_t level, bool overwriteM4a);

    QString description() const override;

    /// kbit/s, or the quality 0 to 127 of "VBR".
    std::int32_t level() const { return m_level; }
    QString writtenFile() const override { return m_replacement ? m_replacement->path() : outFile(); }

    void doStartTask() override;
    void finish() override;

private:
    void replaceSource();

    const std::int32_t m_level;
    const bool m_overwriteM4a;
    std::optional<TemporaryFile> m_replacement;
};

} // namespace kruv
