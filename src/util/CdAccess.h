// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/DiscArbitration.h"
#include "util/CdTracks.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace kruv {

/// How the utility tab reaches discs and drives; tests give their own.
struct CdAccess
{
    QString root; ///< of /sys and /run
    std::shared_ptr<DiscArbitration> arbitration = std::make_shared<DiscArbitration>();
    std::function<std::optional<CdTracks::Range>(const QString &device)> audioTracksIn =
        CdTracks::audioTracksIn;
};

} // namespace kruv
