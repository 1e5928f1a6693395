// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Engine.h"

#include "support/Wait.h"
#include "tasks/KruvTask.h"

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

std::optional<std::uint32_t> CountingPowerManager::createAssertion(const QString &)
{
    if (refuses) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(++taken);
}

void CountingPowerManager::releaseAssertion(std::uint32_t)
{
    ++released;
}

Engine::Engine(int maxThreads)
    : preferences(folder.file(u"kruv.conf"_s))
    , queue(preferences, userInterface, &power)
{
    queue.setMaxThreads(maxThreads);
}

Engine::~Engine()
{
    queue.killAllTasks();
    queue.cancelAllTasks(); // the second time ends the tools that still run
    static_cast<void>(runToEnd());
}

bool Engine::runToEnd()
{
    const bool ended = waitUntil([this] { return queue.taskCount() == 0; });
    drainPool();
    serveEvents();
    return ended;
}

QString fakeTool()
{
    return QStringLiteral(KRUV_FAKE_TOOL);
}

} // namespace kruv::test
