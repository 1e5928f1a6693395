// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/FormatFlags.h"
#include "cli/TabVerb.h"

#include <QCoreApplication>

namespace kruv {

/// `kruv encode`: the encode tab.
class EncodeVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::EncodeVerb)
public:
    explicit EncodeVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    FormatFlags m_flags;
};

} // namespace kruv
