// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolSplitTask.h"

#include "base/PathNames.h"
#include "shntool/FileMove.h"
#include "shntool/SHNToolArguments.h"

namespace kruv {

SHNToolSplitTask::SHNToolSplitTask(TaskCompletionSink *queue, const QString &launchPath,
                                   const QString &splitPoints, const QString &folder, const QString &format,
                                   const QString &file)
    : SHNToolTask(queue, launchPath, SHNToolArguments::split(splitPoints, folder, format, file),
                  {.text = "Splitting: %1%", .unreadable = "Splitting: ? %"})
    , m_folder(folder)
    , m_file(file)
{
    setTitles(PathNames::lastPathComponent(file));
}

void SHNToolSplitTask::startTask()
{
    for (auto each = m_trackTitleMap.cbegin(); each != m_trackTitleMap.cend(); ++each) {
        m_tracks.insert(each.key(), OutputWatch(m_folder + u'/' + each.key()));
    }
    SHNToolTask::startTask();
}

void SHNToolSplitTask::cleanup()
{
    for (auto each = m_trackTitleMap.cbegin(); each != m_trackTitleMap.cend(); ++each) {
        // Tracks that an earlier split left there belong to the person.
        if (each.key() == each.value() || !m_tracks.value(each.key()).written()) {
            continue;
        }
        const QString problem =
            FileMove::intoFreePlace(m_folder + u'/' + each.key(), m_folder + u'/' + each.value());
        if (!problem.isEmpty()) {
            fail(QStringLiteral("%1 kept its name: it could not become %2 (%3).")
                     .arg(each.key(), each.value(), problem));
        }
    }
    if (!error()) {
        results()->setHasResults(false);
    }
}

} // namespace kruv
