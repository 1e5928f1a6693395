// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

#include <QCoreApplication>

namespace kruv {

/// `kruv decode`: the decode tab.
class DecodeVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::DecodeVerb)
public:
    explicit DecodeVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    bool m_throughErrors = false;
    bool m_keepForeignMetadata = false;
};

} // namespace kruv
