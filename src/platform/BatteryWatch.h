// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

namespace kruv {

/// Whether the machine runs on its battery, as UPower tells. Never waits for the bus; without one, or without
/// the service, it tells nothing.
class BatteryWatch : public QObject
{
    Q_OBJECT
public:
    explicit BatteryWatch(const QDBusConnection &bus = QDBusConnection::systemBus());

private Q_SLOTS:
    void propertiesChanged(const QString &interface, const QVariantMap &changed, const QStringList &unknown);

Q_SIGNALS:
    /// With the first answer, and with each change.
    void onBatteryChanged(bool onBattery);

private:
    void ask();

    QDBusConnection m_bus;
};

} // namespace kruv
