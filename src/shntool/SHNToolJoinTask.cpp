// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolJoinTask.h"

#include "shntool/FileMove.h"
#include "shntool/SHNToolArguments.h"
#include "tasks/OriginalFile.h"

#include <QDir>
#include <QLoggingCategory>

namespace kruv {

namespace {
Q_LOGGING_CATEGORY(joinLog, "kruv.shntool", QtWarningMsg)
}

SHNToolJoinTask::SHNToolJoinTask(TaskCompletionSink *queue, const QString &launchPath, const QString &folder,
                                 const QString &format, const QStringList &files)
    : SHNToolTask(queue, launchPath, SHNToolArguments::join(folder, format, files),
                  {.text = "Joining Files: %1%", .namesFile = true})
    , m_joinedFile(SHNToolArguments::joinedFile(folder, format))
    , m_files(files)
{
    setTitles(QStringLiteral("Running SHNTool Join"));
}

void SHNToolJoinTask::startTask()
{
    m_joined = OutputWatch(m_joinedFile);
    m_output = OutputWatch(m_fileName.isEmpty() ? m_joinedFile : m_fileName);
    SHNToolTask::startTask();
}

void SHNToolJoinTask::cleanup()
{
    // A file of that name that was there before belongs to the person.
    if (!m_fileName.isEmpty() && m_joined.written()) {
        moveToFileName();
    }
    for (const QString &source : m_files) {
        if (!OutputWatch::isSameFile(source, m_fileName)) {
            OriginalFile::deleteAfterSuccess(*this, source, m_output);
        }
    }
    if (!error()) {
        results()->setHasResults(false);
    }
}

void SHNToolJoinTask::moveToFileName()
{
    if (QDir::cleanPath(m_joinedFile) == QDir::cleanPath(m_fileName)) {
        return;
    }
    qCInfo(joinLog, "Renaming %s to %s", qUtf8Printable(m_joinedFile), qUtf8Printable(m_fileName));
    const QString problem = FileMove::replace(m_joinedFile, m_fileName);
    if (!problem.isEmpty()) {
        fail(QStringLiteral("The joined file is %1: it could not be moved to %2 (%3).")
                 .arg(m_joinedFile, m_fileName, problem));
    }
}

} // namespace kruv
