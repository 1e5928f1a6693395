// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

namespace kruv::test {

/// A message bus of the test's own: nothing is on it but what the test puts there, and nothing can be started
/// through it. Ends with the object.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    bool runs() const { return !m_address.isEmpty(); }
    /// The connection of the program that is tested.
    QDBusConnection ours() const { return QDBusConnection(m_oursName); }
    /// Another program's connection.
    QDBusConnection theirs() const { return QDBusConnection(m_theirsName); }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    const QString m_oursName = QStringLiteral("ours");
    const QString m_theirsName = QStringLiteral("theirs");
};

} // namespace kruv::test
