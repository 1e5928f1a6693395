// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/BusService.h"

namespace kruv {

/// Shows notifications through org.freedesktop.Notifications (Desktop Notifications, version 1.2). Main
/// thread; no call waits for the desktop.
class DesktopNotifier : public QObject
{
    Q_OBJECT
public:
    explicit DesktopNotifier(const QDBusConnection &bus = QDBusConnection::sessionBus());

    /// False where the desktop has no notifications; the person's attention is then to be had in another way.
    bool notify(const QString &title);

Q_SIGNALS:
    /// The service took the call but did not show the notification.
    void refused();

private:
    QDBusConnection m_bus;
    const BusService m_service;
};

} // namespace kruv
