// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

#include <optional>

namespace kruv {

/// Count and progress on the application's icon in docks and task bars that listen for the Update signal of
/// com.canonical.Unity.LauncherEntry. Main thread. Changes are gathered, so setting them for every job is
/// fine.
class LauncherBadge : public QObject
{
    Q_OBJECT
public:
    explicit LauncherBadge(const QDBusConnection &bus = QDBusConnection::sessionBus());
    /// Takes what is shown off the icon.
    ~LauncherBadge() override;

    /// 0 removes the count.
    void setCount(int count);
    /// 0.0 to 1.0; nothing removes the bar.
    void setProgress(std::optional<double> fraction);

private:
    void changed();
    void send();

    QDBusConnection m_bus;
    QTimer m_soon;
    int m_count = 0;
    std::optional<double> m_progress;
    QVariantMap m_sent;
};

} // namespace kruv
