// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/BusService.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <functional>

namespace kruv {

namespace {

QDBusMessage busCall(const QString &method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

void whenAnswered(const QDBusPendingCall &call, QObject *receiver,
                  const std::function<void(const QDBusPendingCall &)> &handle)
{
    auto *watcher = new QDBusPendingCallWatcher(call, receiver);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, receiver,
                     [handle](QDBusPendingCallWatcher *finished) {
                         handle(*finished);
                         finished->deleteLater();
                     });
}

} // namespace

BusService::BusService(const QDBusConnection &bus, const QString &name)
    : m_bus(bus)
    , m_name(name)
{
    if (!m_bus.isConnected()) {
        return;
    }
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { m_running = !owner.isEmpty(); });
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.addWatchedService(m_name);
    askWhetherRunning();
    askWhetherStartable();
}

void BusService::askWhetherRunning()
{
    QDBusMessage call = busCall(QStringLiteral("NameHasOwner"));
    call << m_name;
    whenAnswered(m_bus.asyncCall(call, answerTimeout), this, [this](const QDBusPendingCall &answered) {
        const QDBusPendingReply<bool> reply = answered;
        m_running = reply.isValid() && reply.value();
    });
}

void BusService::askWhetherStartable()
{
    const QDBusMessage call = busCall(QStringLiteral("ListActivatableNames"));
    whenAnswered(m_bus.asyncCall(call, answerTimeout), this, [this](const QDBusPendingCall &answered) {
        const QDBusPendingReply<QStringList> reply = answered;
        m_startable = reply.isValid() && reply.value().contains(m_name);
    });
}

} // namespace kruv
