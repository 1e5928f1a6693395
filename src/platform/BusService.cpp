// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/BusService.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace kruv {

namespace {

QDBusMessage busCall(const QString &method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace

void BusService::ask(const QDBusConnection &bus, const QDBusMessage &call, QObject *receiver,
                     const std::function<void(const QDBusPendingCall &answered)> &handle)
{
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, answerTimeout), receiver);
    connect(watcher, &QDBusPendingCallWatcher::finished, receiver,
            [handle](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                handle(*finished);
            });
}

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
    ask(m_bus, call, this, [this](const QDBusPendingCall &answered) {
        const QDBusPendingReply<bool> reply = answered;
        m_running = reply.isValid() && reply.value();
    });
}

void BusService::askWhetherStartable()
{
    const QDBusMessage call = busCall(QStringLiteral("ListActivatableNames"));
    ask(m_bus, call, this, [this](const QDBusPendingCall &answered) {
        const QDBusPendingReply<QStringList> reply = answered;
        m_startable = reply.isValid() && reply.value().contains(m_name);
    });
}

} // namespace kruv
