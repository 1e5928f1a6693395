// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/DesktopNotifier.h"

#include "platform/DesktopId.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
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
    auto *watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(notifyCall(title), BusService::answerTimeout), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        if (finished->isError()) {
            Q_EMIT refused();
        }
    });
    return true;
}

} // namespace kruv
