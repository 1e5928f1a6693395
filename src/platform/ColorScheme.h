// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

namespace kruv {

/// Follows the desktop's wish for dark or light windows, as its settings portal tells it (key color-scheme of
/// org.freedesktop.appearance). Never waits for the bus; without one, or without the portal, it tells
/// nothing.
class ColorScheme : public QObject
{
    Q_OBJECT
public:
    explicit ColorScheme(const QDBusConnection &bus = QDBusConnection::sessionBus());

private Q_SLOTS:
    void settingChanged(const QDBusMessage &message);

Q_SIGNALS:
    /// With the first answer, and with each change.
    void darkWanted(bool dark);

private:
    void ask();
    void tell(QVariant value);

    QDBusConnection m_bus;
};

} // namespace kruv
