// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/Preferences.h"
#include "platform/PowerManager.h"
#include "support/Files.h"
#include "support/ScriptedUserInterface.h"
#include "tasks/KruvTaskQueue.h"

namespace kruv::test {

/// Counts what is asked of the desktop's power manager.
class CountingPowerManager : public PowerManager
{
public:
    bool refuses = false;
    int taken = 0;
    int released = 0;

    std::optional<std::uint32_t> createAssertion(const QString &name) override;
    void releaseAssertion(std::uint32_t assertionId) override;
};

/// A whole engine in a temporary folder: preferences, a scripted person and the queue. Ends every job before
/// it goes.
class Engine
{
public:
    explicit Engine(int maxThreads = 2);
    ~Engine();

    /// Serves events until the queue holds no job any more and no background work runs.
    [[nodiscard]] bool runToEnd();

    TemporaryFolder folder;
    Preferences preferences;
    ScriptedUserInterface userInterface;
    CountingPowerManager power;
    KruvTaskQueue queue;
};

/// Path of the helper program that plays an external tool; FakeTool.cpp lists its modes.
QString fakeTool();

} // namespace kruv::test
