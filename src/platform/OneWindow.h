// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <cstdint>
#include <functional>

namespace kruv {

/// What the window that is open takes from later starts of the program, by the session's message bus; in the
/// words of the freedesktop.org application interface, so that a desktop can use them, too. Main thread.
class OneWindow : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    explicit OneWindow(const QDBusConnection &bus = QDBusConnection::sessionBus());
    ~OneWindow() override;

    /// From now on the files are sent here. False where another process has the window, and where there is no
    /// bus.
    bool open();
    /// Later starts don't find it any more.
    void close();

    // To the window of another process; false where there is none, or it doesn't answer.
    bool isOpenElsewhere() const;
    /// Files may be paths or URLs. Without any the window comes to the front.
    bool hand(const QString &tab, const QStringList &files) const;
    /// It goes on with a run of that journal.
    bool handRun(std::int64_t run, const QString &journal) const;

    /// Whether the run is taken; asked while another process waits for the answer.
    using RunTaker = std::function<bool(std::int64_t run, const QString &journal)>;
    void setRunTaker(const RunTaker &taker) { m_takeRun = taker; }

Q_SIGNALS:
    void wanted();
    void tabWanted(const QString &label);
    void filesGiven(const QStringList &files);

public Q_SLOTS:
    // The interface.
    void Activate(const QVariantMap &platformData);                          // NOLINT
    void Open(const QStringList &uris, const QVariantMap &platformData);     // NOLINT
    void ActivateAction(const QString &name, const QVariantList &parameters, // NOLINT
                        const QVariantMap &platformData);

private:
    bool call(const QString &method, const QVariantList &arguments) const;

    QDBusConnection m_bus;
    bool m_isOpen = false;
    RunTaker m_takeRun;
};

} // namespace kruv
