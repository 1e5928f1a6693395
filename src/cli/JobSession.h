// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/Preferences.h"
#include "cli/CliUserInterface.h"
#include "cli/QueueRun.h"
#include "platform/SleepInhibitor.h"
#include "tabs/KruvController.h"

#include <memory>

namespace kruv {

struct CommonOptions;

/// What a command that runs jobs works with: the engine as the person set it up, and who is told of it.
class JobSession
{
public:
    /// `options` must outlive it.
    JobSession(const CommonOptions &options, std::unique_ptr<JobReporter> reporter);

    KruvController &controller() { return m_controller; }
    CliUserInterface &userInterface() { return m_userInterface; }
    QueueRun &queueRun() { return m_queueRun; }

    /// Ends the report, after what the journal has to say. Returns the exit status.
    int finish();

private:
    Preferences m_preferences{Preferences::userFile(), Preferences::ControlState::Defaults};
    CliUserInterface m_userInterface;
    SleepInhibitor m_power;
    KruvController m_controller{m_preferences, m_userInterface, &m_power};
    QueueRun m_queueRun;
};

} // namespace kruv
