// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <functional>

namespace kruv {

/// Knows, without ever waiting for the bus, whether a service can be called. Main thread.
class BusService : public QObject
{
    Q_OBJECT
public:
    /// Longest wait for an answer, in milliseconds.
    static constexpr int answerTimeout = 2000;

    /// Calls without waiting; `handle` gets the answer, or the error, as long as `receiver` lives.
    static void ask(const QDBusConnection &bus, const QDBusMessage &call, QObject *receiver,
                    const std::function<void(const QDBusPendingCall &answered)> &handle);

    BusService(const QDBusConnection &bus, const QString &name);

    /// Whether the service runs or the bus can start it. False until the bus has told, and where there is no
    /// bus.
    bool isAvailable() const { return m_running || m_startable; }

private:
    void askWhetherRunning();
    void askWhetherStartable();

    QDBusConnection m_bus;
    const QString m_name;
    QDBusServiceWatcher m_watcher;
    bool m_running = false;
    bool m_startable = false;
};

} // namespace kruv
