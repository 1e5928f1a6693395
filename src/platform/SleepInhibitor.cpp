// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/SleepInhibitor.h"

#include "platform/BusService.h"

#include <QDBusMessage>
#include <QDBusPendingReply>

namespace kruv {

SleepInhibitor::SleepInhibitor(const QDBusConnection &bus)
    : m_bus(bus)
{
}

std::optional<std::uint32_t> SleepInhibitor::createAssertion(const QString &name)
{
    if (!m_bus.isConnected()) {
        return std::nullopt;
    }
    const std::uint32_t id = ++m_lastId;
    m_assertions.insert(id, {});
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:idle") << QStringLiteral("Kruv") << name << QStringLiteral("block");
    BusService::ask(m_bus, call, this, [this, id](const QDBusPendingCall &answered) {
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply = answered;
        if (const auto held = m_assertions.find(id); held != m_assertions.end() && reply.isValid()) {
            *held = reply.value();
        }
    });
    return id;
}

void SleepInhibitor::releaseAssertion(std::uint32_t assertionId)
{
    m_assertions.remove(assertionId);
}

} // namespace kruv
