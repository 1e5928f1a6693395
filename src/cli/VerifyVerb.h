// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

#include <QCoreApplication>

namespace kruv {

/// `kruv verify`: audio files by their own codec, checksum lists as lists; and `kruv checksum verify`, which
/// takes lists only.
class VerifyVerb : public TabVerb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::VerifyVerb)
public:
    enum class What { AudioAndLists, Lists };
    VerifyVerb(CLI::App &parent, What what);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;

private:
    const What m_what;
};

} // namespace kruv
