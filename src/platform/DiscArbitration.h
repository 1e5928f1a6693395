// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QList>
#include <QSet>
#include <QString>

#include <functional>
#include <mutex>

namespace kruv {

/// Takes discs off the desktop and gives them back: file systems of the kernel through UDisks2, the desktop's
/// own view of an audio disc through the program gio. Any thread.
class DiscArbitration
{
public:
    /// What it stands on; tests give their own.
    struct Platform
    {
        QString root;       ///< of /proc
        QString gvfsFolder; ///< where the desktop's own mounts appear
        QString gio = QStringLiteral("gio");
        std::function<QDBusConnection()> systemBus = [] { return QDBusConnection::systemBus(); };
        int timeout = 10'000; ///< longest wait for an unmount, in milliseconds
    };
    static Platform desktop();

    explicit DiscArbitration(Platform platform = desktop());
    /// Waits for mounts that were asked for, so that a program that ends doesn't take its request back.
    ~DiscArbitration();
    DiscArbitration(const DiscArbitration &) = delete;
    DiscArbitration &operator=(const DiscArbitration &) = delete;

    /// Device name ("sr0") of the disc whose files lie in the folder, empty where that is no disc: what is
    /// mounted there, an audio disc in the desktop's view ("cdda:host=sr0"), or the device itself.
    QString discIdForVolumePath(const QString &folder) const;
    /// What people call the disc mounted on the folder.
    static QString discName(const QString &folder);

    /// Takes the disc off wherever it is mounted, and waits for that: not for the main thread. False, with a
    /// line on standard error, where it stays mounted.
    bool unMountDisc(const QString &bsdName);
    /// Asks for the mounts that unMountDisc() took, and doesn't wait.
    void mountDisc(const QString &bsdName);

private:
    bool isMounted(const QString &bsdName) const;
    bool isInDesktopView(const QString &bsdName) const;
    int unmountFileSystem(const QString &bsdName) const;
    int unmountDesktopView(const QString &bsdName) const;

    const Platform m_platform;
    std::mutex m_lock; // of what follows
    QSet<QString> m_fileSystemsTaken;
    QSet<QString> m_desktopViewsTaken;
    QList<QDBusPendingCall> m_mountsUnderWay;
};

} // namespace kruv
