// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/ColorScheme.h"

#include "platform/BusService.h"

#include <QDBusPendingReply>
#include <QDBusVariant>

namespace kruv {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

} // namespace

ColorScheme::ColorScheme(const QDBusConnection &bus)
    : m_bus(bus)
{
    if (m_bus.isConnected()) {
        // From whoever owns the portal's path: its name may not be looked up without waiting.
        m_bus.connect(QString(), portalPath, settings, QStringLiteral("SettingChanged"), this,
                      SLOT(settingChanged(QDBusMessage)));
        ask();
    }
}

void ColorScheme::ask()
{
    QDBusMessage call = QDBusMessage::createMethodCall(portal, portalPath, settings, QStringLiteral("Read"));
    call << appearance << colorScheme;
    BusService::ask(m_bus, call, this, [this](const QDBusPendingCall &answered) {
        const QDBusPendingReply<QVariant> reply = answered;
        if (reply.isValid()) {
            tell(reply.value());
        }
    });
}

void ColorScheme::settingChanged(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.value(0) == appearance && arguments.value(1) == colorScheme) {
        tell(arguments.value(2));
    }
}

void ColorScheme::tell(QVariant value)
{
    // The answer lies in a variant within a variant.
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    constexpr uint preferDark = 1;
    Q_EMIT darkWanted(value.toUInt() == preferDark);
}

} // namespace kruv
