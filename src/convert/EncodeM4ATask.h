// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/LossyTask.h"
#include "tasks/TemporaryFile.h"

#include <optional>

namespace kruv {

/// What the two jobs that make .m4a files share: an output that is there already, be it the source itself (an
/// Apple Lossless song.m4a beside itself), is made under a temporary name and takes the place of the old file
/// when it is complete.
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

    bool losesSource() const override { return m_replacesSource || LossyTask::losesSource(); }

    void doStartTask() override;
    void finish() override;

private:
    void takePlace();

    const std::int32_t m_level;
    const bool m_overwriteM4a;
    bool m_replacesSource = false;
    std::optional<TemporaryFile> m_replacement;
};

} // namespace kruv
