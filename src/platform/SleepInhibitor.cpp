// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/SleepInhibitor.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace kruv {

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.ScreenSaver");

QDBusMessage screenSaverCall(const QString &method)
{
    return QDBusMessage::createMethodCall(serviceName, QStringLiteral("/org/freedesktop/ScreenSaver"),
                                          serviceName, method);
}

} // namespace

SleepInhibitor::SleepInhibitor(const QDBusConnection &bus)
    : m_bus(bus)
    , m_service(bus, serviceName)
{
}

std::optional<std::uint32_t> SleepInhibitor::createAssertion(const QString &name)
{
    if (!m_service.isAvailable()) {
        return std::nullopt;
    }
    const std::uint32_t id = ++m_lastId;
    m_assertions.insert(id, {});
    QDBusMessage call = screenSaverCall(QStringLiteral("Inhibit"));
    call << QStringLiteral("Kruv") << name;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, BusService::answerTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, id](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        const QDBusPendingReply<uint> reply = *finished;
        answered(id, reply.isValid() ? std::optional(reply.value()) : std::nullopt);
    });
    return id;
}

void SleepInhibitor::releaseAssertion(std::uint32_t assertionId)
{
    const auto assertion = m_assertions.find(assertionId);
    if (assertion == m_assertions.end()) {
        return;
    }
    if (!assertion->cookie) {
        assertion->released = true;
        return;
    }
    uninhibit(*assertion->cookie);
    m_assertions.erase(assertion);
}

void SleepInhibitor::answered(std::uint32_t assertionId, std::optional<uint> cookie)
{
    Assertion &assertion = m_assertions[assertionId];
    assertion.cookie = cookie;
    if (cookie && assertion.released) {
        uninhibit(*cookie);
    }
    if (!cookie || assertion.released) {
        m_assertions.remove(assertionId);
    }
}

void SleepInhibitor::uninhibit(uint cookie)
{
    QDBusMessage call = screenSaverCall(QStringLiteral("UnInhibit"));
    call << cookie;
    m_bus.send(call);
}

} // namespace kruv
