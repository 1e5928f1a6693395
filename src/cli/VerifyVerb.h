// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/TabVerb.h"

namespace kruv {

/// `kruv verify`: audio files by their own codec.
class VerifyVerb : public TabVerb
{
public:
    explicit VerifyVerb(CLI::App &parent);

protected:
    void runCommands(KruvController &controller, QueueRun &queueRun, const QStringList &paths) override;
};

} // namespace kruv
