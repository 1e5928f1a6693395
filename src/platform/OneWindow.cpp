// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/OneWindow.h"

#include "platform/DesktopId.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDir>
#include <QUrl>

#include <utility>

namespace kruv {

namespace {

constexpr int patience = 10'000; // milliseconds; it may be reading a long list
const QString tabAction = QStringLiteral("tab");
const QString runAction = QStringLiteral("continue-run");

QString objectPath()
{
    return u'/' + desktopId().replace(u'.', u'/');
}

QString urlOf(const QString &file)
{
    return file.startsWith(QStringLiteral("file://"), Qt::CaseInsensitive)
               ? file
               : QString::fromLatin1(QUrl::fromLocalFile(QDir().absoluteFilePath(file)).toEncoded());
}

QVariant valueOf(const QVariant &parameter)
{
    return parameter.canConvert<QDBusVariant>() ? parameter.value<QDBusVariant>().variant() : parameter;
}

} // namespace

OneWindow::OneWindow(const QDBusConnection &bus)
    : m_bus(bus)
{
}

OneWindow::~OneWindow()
{
    close();
}

void OneWindow::close()
{
    if (std::exchange(m_isOpen, false)) {
        m_bus.unregisterObject(objectPath());
        m_bus.unregisterService(desktopId());
    }
}

bool OneWindow::open()
{
    // The object first: who sees the name may call at once.
    m_isOpen = m_bus.isConnected() &&
               m_bus.registerObject(objectPath(), this, QDBusConnection::ExportAllSlots) &&
               m_bus.registerService(desktopId());
    if (!m_isOpen) {
        m_bus.unregisterObject(objectPath());
    }
    return m_isOpen;
}

bool OneWindow::isOpenElsewhere() const
{
    return !m_isOpen && m_bus.isConnected() && m_bus.interface()->isServiceRegistered(desktopId());
}

bool OneWindow::hand(const QString &tab, const QStringList &files) const
{
    if (!isOpenElsewhere()) {
        return false;
    }
    if (!tab.isEmpty() &&
        !call(QStringLiteral("ActivateAction"), {tabAction, QVariantList{tab}, QVariantMap()})) {
        return false;
    }
    QStringList urls;
    for (const QString &file : files) {
        urls.append(urlOf(file));
    }
    return urls.isEmpty() ? call(QStringLiteral("Activate"), {QVariantMap()})
                          : call(QStringLiteral("Open"), {urls, QVariantMap()});
}

bool OneWindow::handRun(std::int64_t run, const QString &journal) const
{
    return isOpenElsewhere() &&
           call(QStringLiteral("ActivateAction"),
                {runAction, QVariantList{static_cast<qlonglong>(run), journal}, QVariantMap()});
}

bool OneWindow::call(const QString &method, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        desktopId(), objectPath(), QStringLiteral("org.freedesktop.Application"), method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return m_bus.call(message, QDBus::Block, patience).type() == QDBusMessage::ReplyMessage;
}

void OneWindow::Activate(const QVariantMap &)
{
    Q_EMIT wanted();
}

void OneWindow::Open(const QStringList &uris, const QVariantMap &)
{
    Q_EMIT wanted();
    Q_EMIT filesGiven(uris);
}

void OneWindow::ActivateAction(const QString &name, const QVariantList &parameters, const QVariantMap &)
{
    if (name == tabAction) {
        Q_EMIT tabWanted(valueOf(parameters.value(0)).toString());
        return;
    }
    if (name != runAction) { // one of the desktop entry, named as its tab is
        Q_EMIT wanted();
        Q_EMIT tabWanted(name);
        return;
    }
    const bool isTaken = m_takeRun && m_takeRun(valueOf(parameters.value(0)).toLongLong(),
                                                valueOf(parameters.value(1)).toString());
    if (!isTaken && calledFromDBus()) {
        sendErrorReply(QDBusError::Failed, QStringLiteral("not taken"));
    }
}

} // namespace kruv
