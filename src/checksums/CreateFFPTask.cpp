// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/CreateFFPTask.h"

#include "base/Preferences.h"
#include "checksums/FingerprintList.h"
#include "checksums/FlacFingerprint.h"
#include "checksums/ListText.h"
#include "platform/Resources.h"
#include "tasks/TaskCompletionSink.h"
#include "tasks/ToolCatalog.h"

#include <vector>

namespace kruv {

CreateFFPTask::CreateFFPTask(TaskCompletionSink *queue, QHash<QString, QStringList> files,
                             const QString &ffpName)
    : ListJob(queue)
    , m_files(std::move(files))
    , m_ffpName(ffpName)
{
    setTitle(QStringLiteral("Create FFP checksum file"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

QString CreateFFPTask::outputPath() const
{
    return m_files.isEmpty() ? QString() : m_files.constBegin().key() + u'/' + m_ffpName;
}

void CreateFFPTask::doStartTask()
{
    ToolCatalog::requireLaunchable(toolPath(QStringLiteral("metaflac")));
    showStatus(QStringLiteral("Creating FFP checksum file"));
    for (auto group = m_files.cbegin(); group != m_files.cend() && !cancelled(); ++group) {
        doCreateFFP(group.value(), group.key());
    }
}

void CreateFFPTask::doCreateFFP(const QStringList &files, const QString &outputDir)
{
    std::vector<QString> fingerprints(static_cast<std::size_t>(files.size()));
    forEachFile(fingerprints.size(), [&](std::size_t index, FileProgress &) {
        fingerprints[index] = fingerprint(files[static_cast<qsizetype>(index)]);
    });
    if (cancelled()) {
        return;
    }
    const FingerprintList list = FingerprintList::of(fingerprints);
    for (const QString &problem : list.problems) {
        fail(problem);
    }
    const Preferences &preferences = queue()->preferences();
    const bool afterFolder = preferences.boolean(QStringLiteral("checksumFileUsesOutputDirName"));
    const QString name = afterFolder ? ListText::fileName(outputDir, true, QString(),
                                                          preferences.string(QStringLiteral("ffpExtension")))
                                     : m_ffpName;
    writeList(ListText::joined(outputDir, name), list.text);
}

} // namespace kruv
