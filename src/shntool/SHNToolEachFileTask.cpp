// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolEachFileTask.h"

#include "base/PathNames.h"
#include "shntool/SHNToolArguments.h"
#include "tasks/OriginalFile.h"

namespace kruv {

SHNToolEachFileTask::SHNToolEachFileTask(TaskCompletionSink *queue, const QString &launchPath,
                                         const Mode &mode, const QString &folder, const QString &format,
                                         const QStringList &files)
    : SHNToolTask(queue, launchPath, SHNToolArguments::eachFile(mode.word, folder, format, files),
                  mode.progress)
{
    setTitles(QString::fromLatin1(mode.title));
    for (const QString &source : files) {
        const QString name =
            PathNames::nameWithoutExtension(source) + mode.postfix.toString() + u'.' + format;
        m_conversions.push_back({source, folder + u'/' + name, {}});
    }
}

void SHNToolEachFileTask::startTask()
{
    for (Conversion &each : m_conversions) {
        each.watch = OutputWatch(each.output);
    }
    SHNToolTask::startTask();
}

void SHNToolEachFileTask::cleanup()
{
    for (const Conversion &each : m_conversions) {
        OriginalFile::deleteAfterSuccess(*this, each.source, each.watch);
    }
    if (!error()) {
        results()->setHasResults(false);
    }
}

} // namespace kruv
