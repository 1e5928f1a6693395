// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/BusService.h"
#include "platform/PowerManager.h"

#include <QHash>

namespace kruv {

/// Keeps the display awake through org.freedesktop.ScreenSaver. Main thread; no call waits for the desktop:
/// an assertion counts as taken once it is asked for, and one that is given back before the answer came is
/// given back when it comes.
class SleepInhibitor : public QObject, public PowerManager
{
    Q_OBJECT
public:
    explicit SleepInhibitor(const QDBusConnection &bus = QDBusConnection::sessionBus());

    std::optional<std::uint32_t> createAssertion(const QString &name) override;
    void releaseAssertion(std::uint32_t assertionId) override;

private:
    struct Assertion
    {
        std::optional<uint> cookie; ///< none until the service answered
        bool released = false;
    };

    void answered(std::uint32_t assertionId, std::optional<uint> cookie);
    void uninhibit(uint cookie);

    QDBusConnection m_bus;
    const BusService m_service;
    QHash<std::uint32_t, Assertion> m_assertions;
    std::uint32_t m_lastId = 0;
};

} // namespace kruv
