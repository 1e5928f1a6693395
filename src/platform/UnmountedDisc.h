// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/DiscArbitration.h"

#include <QString>

#include <memory>
#include <utility>

namespace kruv {

/// Keeps a disc off the desktop, and gives it back when it goes, however its owner ends.
class UnmountedDisc
{
public:
    UnmountedDisc(std::shared_ptr<DiscArbitration> arbitration, QString bsdName)
        : m_arbitration(std::move(arbitration))
        , m_bsdName(std::move(bsdName))
    {
    }
    ~UnmountedDisc() { m_arbitration->mountDisc(m_bsdName); }
    UnmountedDisc(const UnmountedDisc &) = delete;
    UnmountedDisc &operator=(const UnmountedDisc &) = delete;

    /// Waits until it is off: not for the main thread.
    void takeOff() { m_arbitration->unMountDisc(m_bsdName); }

private:
    const std::shared_ptr<DiscArbitration> m_arbitration;
    const QString m_bsdName;
};

} // namespace kruv
