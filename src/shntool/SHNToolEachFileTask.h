// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolTask.h"
#include "tasks/OutputWatch.h"

#include <QStringView>

#include <vector>

namespace kruv {

/// Base of the shntool jobs that make a new file of each source: "<name>-trimmed.wav" of "<name>.flac".
class SHNToolEachFileTask : public SHNToolTask
{
public:
    void startTask() override;

protected:
    /// What sets the modes apart.
    struct Mode
    {
        QStringView word; // on the command line
        QStringView postfix;
        const char *title;
        SHNToolProgress progress;
    };

    /// `format` is the extension of the outputs, which go into `folder`.
    SHNToolEachFileTask(TaskCompletionSink *queue, const QString &launchPath, const Mode &mode,
                        const QString &folder, const QString &format, const QStringList &files);

    /// Deletes the sources, where that was asked for.
    void cleanup() override;

private:
    struct Conversion
    {
        QString source;
        QString output;
        OutputWatch watch;
    };
    std::vector<Conversion> m_conversions;
};

} // namespace kruv
