// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"
#include "tabs/UtilTab.h"

#include <QCoreApplication>

namespace kruv {

/// A subcommand of `kruv util` that needs no more than its operation, its files and a flag or two.
class UtilVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::UtilVerb)
public:
    UtilVerb(CLI::App &parent, UtilTab::Command command);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    void declareOwnFlags();
    void setControls(UtilTab &tab) const;

    const UtilTab::Command m_command;
    bool m_remove = false;
    std::string m_rate;
};

} // namespace kruv
