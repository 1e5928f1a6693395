// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

#include <QCoreApplication>

namespace kruv {

/// `kruv checksum create`: one list over all the given files.
class ChecksumCreateVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ChecksumCreateVerb)
public:
    explicit ChecksumCreateVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    std::string m_kind;
};

} // namespace kruv
