// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/ReplayGainTask.h"

#include "base/PathNames.h"

namespace kruv {

ReplayGainTask::ReplayGainTask(TaskCompletionSink *queue, const QString &launchPath, What what,
                               const QStringList &files)
    : KruvAsyncNSTask(queue, launchPath,
                      QStringList{what == What::Add ? QStringLiteral("--add-replay-gain")
                                                    : QStringLiteral("--remove-replay-gain")} +
                          files)
    , m_files(files)
    , m_folder(PathNames::folderOf(files.value(0)))
{
    setTitle(what == What::Add ? tr("Adding FLAC replay gain") : tr("Removing FLAC replay gain"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void ReplayGainTask::startTask()
{
    KruvAsyncNSTask::startTask();
    setTopTextFieldString(title());
    publish(&KruvTask::setTopTextFieldValue);
    startIndeterminateProgressBar(); // the tool tells nothing of its way
}

void ReplayGainTask::prepare()
{
    for (const QString &file : m_files) {
        if (const auto stamp = FileStamp::of(file)) {
            m_before.push_back({file, *stamp, FlacMetadataCopy(file)});
        }
    }
}

void ReplayGainTask::cleanup()
{
    Receipt receipt;
    QList<QByteArray> waysBack;
    for (const Before &before : m_before) {
        const auto now = FileStamp::of(before.path);
        if (!now || now->hasContentOf(before.stamp)) {
            continue;
        }
        const auto back = before.metadata.wayBack();
        receipt.sources.push_back({before.path, before.stamp});
        receipt.outputs.push_back({before.path, *now});
        waysBack.append(back ? FileEdit::pack({*back}) : QByteArray());
    }
    m_before.clear();
    receipt.wayBack = FileEdit::bundle(waysBack);
    if (!receipt.outputs.empty()) {
        m_receipt = std::move(receipt);
    }
}

void ReplayGainTask::finalCleanup()
{
    if (!error()) {
        results()->setHasResults(false);
    }
}

} // namespace kruv
