// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

#include <QCoreApplication>

namespace kruv {

class FixTab;

/// `kruv fix`: the fix tab.
class FixVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::FixVerb)
public:
    explicit FixVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    void setControls(FixTab &tab) const;

    int m_level = -1;
    std::string m_md5 = "none";
    bool m_fingerprints = false;
};

} // namespace kruv
