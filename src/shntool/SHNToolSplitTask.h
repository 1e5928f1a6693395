// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolTask.h"
#include "tasks/OutputWatch.h"

#include <QMap>

namespace kruv {

/// Splits one file into tracks and gives those that have a title its name.
class SHNToolSplitTask : public SHNToolTask
{
public:
    /// The tracks go into `folder`.
    SHNToolSplitTask(TaskCompletionSink *queue, const QString &launchPath, const QString &splitPoints,
                     const QString &folder, const QString &format, const QString &file);

    /// From the file names that the tool writes to the wanted ones.
    void setTrackTitleMap(const QMap<QString, QString> &map) { m_trackTitleMap = map; }

    void startTask() override;
    QString inputPath() const override { return m_file; }

protected:
    void cleanup() override;

private:
    const QString m_folder;
    const QString m_file;
    QMap<QString, QString> m_trackTitleMap;
    QMap<QString, OutputWatch> m_tracks; // by the tool's names
};

} // namespace kruv
