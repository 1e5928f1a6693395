// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/LauncherBadge.h"

#include "platform/DesktopId.h"

#include <QDBusMessage>

#include <algorithm>
#include <chrono>

namespace kruv {

namespace {

constexpr std::chrono::milliseconds gathering{100};

QVariantMap properties(int count, const std::optional<double> &progress)
{
    return {{QStringLiteral("count"), qint64{count}},
            {QStringLiteral("count-visible"), count > 0},
            {QStringLiteral("progress"), progress.value_or(0.0)},
            {QStringLiteral("progress-visible"), progress.has_value()}};
}

} // namespace

LauncherBadge::LauncherBadge(const QDBusConnection &bus)
    : m_bus(bus)
    , m_sent(properties(0, std::nullopt)) // what a launcher shows that was told nothing
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(gathering);
    connect(&m_soon, &QTimer::timeout, this, &LauncherBadge::send);
}

LauncherBadge::~LauncherBadge()
{
    m_count = 0;
    m_progress.reset();
    send();
}

void LauncherBadge::setCount(int count)
{
    m_count = std::max(count, 0);
    changed();
}

void LauncherBadge::setProgress(std::optional<double> fraction)
{
    if (fraction) {
        fraction = std::clamp(*fraction, 0.0, 1.0);
    }
    m_progress = fraction;
    changed();
}

void LauncherBadge::changed()
{
    if (!m_soon.isActive() && m_bus.isConnected()) {
        m_soon.start();
    }
}

void LauncherBadge::send()
{
    const QVariantMap now = properties(m_count, m_progress);
    if (now == m_sent || !m_bus.isConnected()) {
        return;
    }
    QDBusMessage update = QDBusMessage::createSignal(QStringLiteral("/org/kruv/Kruv/launcher"),
                                                     QStringLiteral("com.canonical.Unity.LauncherEntry"),
                                                     QStringLiteral("Update"));
    update << QStringLiteral("application://%1.desktop").arg(desktopId()) << now;
    if (m_bus.send(update)) {
        m_sent = now;
    }
}

} // namespace kruv
