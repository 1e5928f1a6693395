// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/BatteryWatch.h"

#include "platform/BusService.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace kruv {

namespace {

const QString upower = QStringLiteral("org.freedesktop.UPower");
const QString upowerPath = QStringLiteral("/org/freedesktop/UPower");
const QString busProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString onBattery = QStringLiteral("OnBattery");

} // namespace

BatteryWatch::BatteryWatch(const QDBusConnection &bus)
    : m_bus(bus)
{
    if (m_bus.isConnected()) {
        // From whoever owns the service's path: its name may not be looked up without waiting.
        m_bus.connect(QString(), upowerPath, busProperties, QStringLiteral("PropertiesChanged"), this,
                      SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
        ask();
    }
}

void BatteryWatch::ask()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(upower, upowerPath, busProperties, QStringLiteral("Get"));
    call << upower << onBattery;
    BusService::ask(m_bus, call, this, [this](const QDBusPendingCall &answered) {
        const QDBusPendingReply<QDBusVariant> reply = answered;
        if (reply.isValid()) {
            Q_EMIT onBatteryChanged(reply.value().variant().toBool());
        }
    });
}

void BatteryWatch::propertiesChanged(const QString &interface, const QVariantMap &changed,
                                     const QStringList &unknown)
{
    if (interface != upower) {
        return;
    }
    if (changed.contains(onBattery)) {
        Q_EMIT onBatteryChanged(changed.value(onBattery).toBool());
    } else if (unknown.contains(onBattery)) {
        ask();
    }
}

} // namespace kruv
