// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/CreateFFPTask.h"

#include "checksums/FlacFingerprint.h"
#include "checksums/ListText.h"
#include "platform/Resources.h"
#include "tasks/TaskCompletionSink.h"
#include "tasks/ToolCatalog.h"

#include <QFileInfo>

#include <utility>
#include <vector>

namespace kruv {

CreateFFPTask::CreateFFPTask(TaskCompletionSink *queue, const QStringList &files, const QString &path)
    : CreateFFPTask(queue, QList<List>{{path, files}})
{
}

CreateFFPTask::CreateFFPTask(TaskCompletionSink *queue, const QList<List> &lists)
    : ListJob(queue)
{
    for (const List &list : lists) {
        m_lists.append({TextOutput(list.path, list.files), list.files});
    }
    setTitle(tr("Create FFP checksum file"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void CreateFFPTask::doStartTask()
{
    ToolCatalog::requireLaunchable(toolPath(QStringLiteral("metaflac")));
    showStatus(tr("Creating FFP checksum file"));
    for (TargetedList &list : m_lists) {
        if (m_leavesOutUnmade) {
            leaveOutUnmade(list.files);
        }
        doCreateFFP(list);
    }
}

/// A tool's words on what is not there are no fingerprint.
void CreateFFPTask::leaveOutUnmade(QStringList &files)
{
    const auto unmade =
        static_cast<int>(files.removeIf([](const QString &file) { return !QFileInfo::exists(file); }));
    if (unmade > 0) {
        fail(tr("%n file(s) are not in the list, as they were not made.", nullptr, unmade));
    }
}

void CreateFFPTask::doCreateFFP(const TargetedList &list)
{
    std::vector<QString> fingerprints(static_cast<std::size_t>(list.files.size()));
    forEachFile(fingerprints.size(), [&](std::size_t index, FileProgress &) {
        fingerprints[index] = fingerprintOf(list.files[static_cast<qsizetype>(index)]);
    });
    if (cancelled()) {
        return;
    }
    QString text = ListText::ffpHeader();
    for (const QString &each : fingerprints) {
        text += each;
        if (isMetaflacError(each)) {
            fail(each.trimmed());
        } else if (each.count(u'\n') > 1) {
            fail(tr("%1: this name breaks its line, so the list can't be verified.").arg(each.trimmed()));
        }
    }
    writeList(list.target, text);
}

QString CreateFFPTask::fingerprintOf(const QString &file)
{
    const QFileInfo info(file);
    if (info.exists() && !info.isFile()) { // a pipe would be waited for
        fail(tr("%1 is not in the list: it is not a regular file.").arg(file));
        return {};
    }
    QString found = fingerprint(file, stopToken());
    if (!cancelled() && !isMetaflacError(found) && !isFingerprint(found)) {
        fail(tr("%1 is not in the list: metaflac told no fingerprint of it.").arg(file));
        return {};
    }
    return found;
}

} // namespace kruv
