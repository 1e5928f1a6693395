// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

namespace kruv {

class SHNtoolTab;

/// `kruv shntool len`, `trim` and so on: a command of the shntool tab.
class ShntoolVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ShntoolVerb)
public:
    /// Adds `shntool` with all its commands to the program.
    static void addAll(CLI::App &program, std::vector<std::unique_ptr<Verb>> &verbs);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    struct Mode;
    static const Mode modes[];

    ShntoolVerb(CLI::App &parent, const Mode &mode);
    void declareFlags();
    void setControls(SHNtoolTab &tab);
    void enterNames(SHNtoolTab &tab);

    const Mode &m_mode;
    std::string m_length;
    std::string m_names;
};

} // namespace kruv
