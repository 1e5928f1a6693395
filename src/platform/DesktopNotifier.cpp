// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/DesktopNotifier.h"

#include "platform/DesktopId.h"

#include <QDBusMessage>
#include <QVariantMap>

namespace kruv {

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.Notifications");
/// How long it stays is the service's choice.
constexpr int serviceChooses = -1;

QDBusMessage notifyCall(const QString &title)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        serviceName, QStringLiteral("/org/freedesktop/Notifications"), serviceName, QStringLiteral("Notify"));
    constexpr uint replacesNone = 0;
    const QVariantMap hints{{QStringLiteral("desktop-entry"), desktopId()}};
    call << QStringLiteral("Kruv") << replacesNone << desktopId() << title << QString() << QStringList()
         << hints << serviceChooses;
    return call;
}

} // namespace

DesktopNotifier::DesktopNotifier(const QDBusConnection &bus)
    : m_bus(bus)
    , m_service(bus, serviceName)
{
}

bool DesktopNotifier::notify(const QString &title)
{
    if (!m_service.isAvailable()) {
        return false;
    }
    BusService::ask(m_bus, notifyCall(title), this, [this](const QDBusPendingCall &answered) {
        if (answered.isError()) {
            Q_EMIT refused();
        }
    });
    return true;
}

} // namespace kruv
