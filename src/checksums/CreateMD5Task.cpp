// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/CreateMD5Task.h"

#include "base/PathNames.h"
#include "checksums/FileHash.h"
#include "checksums/ListText.h"

#include <QFile>

#include <algorithm>
#include <vector>

namespace kruv {

CreateMD5Task::CreateMD5Task(TaskCompletionSink *queue, const QStringList &files, const QString &outputPath)
    : ListJob(queue)
    , m_files(files)
    , m_list(outputPath, files)
{
    setTitle(tr("Create MD5 checksum file"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

bool CreateMD5Task::areAllSameDirectory(const QStringList &files)
{
    return std::ranges::all_of(files, [folder = PathNames::folderOf(files.value(0))](const QString &file) {
        return PathNames::folderOf(file) == folder;
    });
}

void CreateMD5Task::doStartTask()
{
    showStatus(tr("Creating MD5 checksum file"));
    doCreateMd5();
}

void CreateMD5Task::doCreateMd5()
{
    std::vector<FileHash::Result> hashes(static_cast<std::size_t>(m_files.size()));
    setTopTextFieldString(tr("Creating MD5 Hash"));
    forEachFile(hashes.size(), [&](std::size_t index, FileProgress &progress) {
        const QString &file = m_files[static_cast<qsizetype>(index)];
        setTextFieldString(PathNames::lastPathComponent(file));
        hashes[index] =
            FileHash::hashOfFileAtPath(QFile::encodeName(file), FileHash::Algorithm::MD5, [&](double share) {
                progress.set(share);
                return !cancelled();
            });
    });
    if (cancelled()) {
        return;
    }
    const bool inOneFolder = areAllSameDirectory(m_files);
    const QString folder = PathNames::folderOf(m_list.path());
    QString text = ListText::md5Header();
    for (std::size_t index = 0; index < hashes.size(); ++index) {
        const QString &file = m_files[static_cast<qsizetype>(index)];
        if (hashes[index].problem == FileHash::Problem::None) {
            text +=
                ListText::md5Line(hashes[index].digest, ListText::nameInMd5List(file, folder, inOneFolder));
        } else {
            fail(tr("%1 is not in the list: %2").arg(file, hashes[index].message));
        }
    }
    setProgressIndicatorValue(0.0);
    showStatus(QString());
    writeList(m_list, text);
}

} // namespace kruv
