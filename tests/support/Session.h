// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/Preferences.h"
#include "support/Files.h"
#include "support/ScriptedUserInterface.h"
#include "support/Wait.h"
#include "tabs/KruvController.h"
#include "tasks/KruvAsyncNSTask.h"

#include <vector>

namespace kruv::test {

/// How a job ended, for tests: jobs themselves leave the queue when they do.
struct Ended
{
    QStringList arguments; // of its tool, where it has one
    QString input;
    bool error = false;
    bool cancelled = false;
    bool deleteOriginal = false;
    QString text;
};

/// The whole application without a window: preferences, a scripted person, the controller with its tabs, and
/// a folder for music. Ends every job before it goes.
class Session
{
public:
    Session()
    {
        QObject::connect(&controller.taskQueue(), &KruvTaskQueue::taskEnded, [this](KruvTask &task) {
            const auto *tool = dynamic_cast<KruvAsyncNSTask *>(&task);
            ended.push_back({tool ? tool->arguments() : QStringList(), task.inputPath(), task.error(),
                             task.cancelled(), task.deleteOriginal(), task.results()->results(task)});
        });
    }
    ~Session()
    {
        controller.applicationWillTerminate();
        static_cast<void>(runToEnd());
    }

    /// Serves events until the queue is empty.
    [[nodiscard]] bool runToEnd()
    {
        const bool empty = waitUntil([this] { return controller.taskQueue().taskCount() == 0; });
        drainPool();
        serveEvents();
        return empty;
    }

    TemporaryFolder folder;
    QString music = folder.makeFolder(QStringLiteral("music"));
    Preferences preferences{folder.file(QStringLiteral("kruv.conf"))};
    ScriptedUserInterface person;
    KruvController controller{preferences, person, nullptr};
    std::vector<Ended> ended;
};

} // namespace kruv::test
