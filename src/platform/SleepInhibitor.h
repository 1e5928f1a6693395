// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/PowerManager.h"

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QHash>
#include <QObject>

namespace kruv {

/// Keeps the machine awake by way of logind, with or without a desktop. The system gives an assertion back by
/// itself when the process ends. Needs an event loop for the service's answers; where it refuses, the machine
/// may sleep.
class SleepInhibitor : public QObject, public PowerManager
{
    Q_OBJECT
public:
    explicit SleepInhibitor(const QDBusConnection &bus = QDBusConnection::systemBus());

    std::optional<std::uint32_t> createAssertion(const QString &name) override;
    void releaseAssertion(std::uint32_t assertionId) override;

private:
    QDBusConnection m_bus;
    /// What is held as long as it is open; none until the service answered.
    QHash<std::uint32_t, QDBusUnixFileDescriptor> m_assertions;
    std::uint32_t m_lastId = 0;
};

} // namespace kruv
