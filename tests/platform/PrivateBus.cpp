// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/PrivateBus.h"

#include <QFile>

namespace kruv::test {

namespace {

const char configuration[] =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=%1/bus</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::PrivateBus()
{
    QFile file(m_folder.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly)) {
        return;
    }
    file.write(QString::fromLatin1(configuration).arg(m_folder.path()).toUtf8());
    file.close();
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--nofork"), QStringLiteral("--nosyslog"),
                    QStringLiteral("--print-address"), QStringLiteral("--config-file=") + file.fileName()});
    // The address is printed once the bus listens.
    if (m_daemon.waitForReadyRead()) {
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    QDBusConnection::connectToBus(m_address, m_oursName);
    QDBusConnection::connectToBus(m_address, m_theirsName);
}

PrivateBus::~PrivateBus()
{
    QDBusConnection::disconnectFromBus(m_oursName);
    QDBusConnection::disconnectFromBus(m_theirsName);
    m_daemon.kill();
    m_daemon.waitForFinished();
}

} // namespace kruv::test
