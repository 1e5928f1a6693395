// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "convert/EncodeM4ATask.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace kruv {

EncodeM4ATask::EncodeM4ATask(TaskCompletionSink *queue, const QString &fileName, const QString &outputPath,
                             const Recipe &recipe, std::int32_t level, bool overwriteM4a)
    : LossyTask(queue, fileName, outputPath, recipe)
    , m_level(level)
    , m_overwriteM4a(overwriteM4a)
{
}

QString EncodeM4ATask::description() const
{
    return QStringLiteral("in %1, out %2").arg(fileName(), writtenFile());
}

void EncodeM4ATask::doStartTask()
{
    m_replacesSource = outFile() == fileName() || OutputWatch::isSameFile(outFile(), fileName());
    if (m_replacesSource || (m_overwriteM4a && QFile::exists(outFile()))) {
        m_replacement.emplace(folder(), QStringLiteral("m4a"));
    }
    // The job may live on in the status table; what didn't take the old file's place must not.
    const auto removal = qScopeGuard([this] { m_replacement.reset(); });
    LossyTask::doStartTask();
}

void EncodeM4ATask::finish()
{
    LossyTask::finish();
    if (m_replacement && mayGoOn()) {
        takePlace();
    }
}

void EncodeM4ATask::takePlace()
{
    const QString written = m_replacement->path();
    QFile::setPermissions(written, QFile::permissions(outFile()));
    if (QFileInfo(written).size() == 0 || !OutputWatch(written).reachedDisk()) {
        fail(QStringLiteral("%1 was kept: what should take its place is not complete.\n").arg(outFile()));
    } else if (std::rename(QFile::encodeName(written).constData(),
                           QFile::encodeName(outFile()).constData()) != 0) {
        fail(QStringLiteral("%1 was kept: %2 could not take its place: %3\n")
                 .arg(outFile(), written, QString::fromLocal8Bit(std::strerror(errno))));
    }
}

} // namespace kruv
