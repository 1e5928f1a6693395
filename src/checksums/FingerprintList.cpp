// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/FingerprintList.h"

#include "base/InParallel.h"
#include "base/TaskPool.h"
#include "base/TextFile.h"
#include "checksums/FlacFingerprint.h"
#include "checksums/ListText.h"
#include "platform/Resources.h"
#include "tasks/ToolCatalog.h"

#include <QEventLoop>

#include <atomic>
#include <exception>
#include <future>
#include <memory>
#include <vector>

namespace kruv {

FingerprintList FingerprintList::of(std::span<const QString> fingerprints)
{
    FingerprintList list{ListText::ffpHeader(), {}};
    for (const QString &each : fingerprints) {
        list.text += each;
        if (isMetaflacError(each)) {
            list.problems.append(each.trimmed());
        } else if (each.count(u'\n') > 1) {
            list.problems.append(
                QStringLiteral("%1: this name breaks its line, so the list can't be verified.")
                    .arg(each.trimmed()));
        }
    }
    return list;
}

QStringList FingerprintList::writeAtOnce(const QStringList &files, const QString &path, int jobsAtOnce)
{
    QEventLoop loop;
    std::atomic<bool> stopped = false;
    const auto outcome = std::make_shared<std::promise<QStringList>>();
    TaskPool::start([&, outcome] {
        QStringList problems;
        try {
            ToolCatalog::requireLaunchable(toolPath(QStringLiteral("metaflac")));
            std::vector<QString> fingerprints(static_cast<std::size_t>(files.size()));
            inParallel(
                fingerprints.size(), threadsForOneJob(jobsAtOnce), [&] { return stopped.load(); },
                [&](std::size_t index) {
                    fingerprints[index] = fingerprint(files[static_cast<qsizetype>(index)]);
                });
            const FingerprintList list = of(fingerprints);
            problems = list.problems;
            const QString problem = stopped ? QString() : TextFile::write(path, list.text);
            if (!problem.isEmpty()) {
                problems.append(QStringLiteral("The list %1 could not be written: %2.").arg(path, problem));
            }
        } catch (const std::exception &failure) {
            problems.append(QString::fromUtf8(failure.what()));
        }
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        outcome->set_value(problems);
    });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    stopped = true; // where the program is quitting, the loop ends before the work
    return outcome->get_future().get();
}

} // namespace kruv
