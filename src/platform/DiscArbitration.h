// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>

namespace kruv {

/// Takes discs off the desktop and gives them back: file systems of the kernel through UDisks2, the desktop's
/// own view of an audio disc through the program gio. Main thread.
class DiscArbitration : public QObject
{
    Q_OBJECT
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
    ~DiscArbitration() override;

    /// Device name ("sr0") of the disc whose files lie in the folder, empty where that is no disc: what is
    /// mounted there, an audio disc in the desktop's view ("cdda:host=sr0"), or the device itself.
    QString discIdForVolumePath(const QString &folder) const;
    /// What people call the disc mounted on the folder.
    static QString discName(const QString &folder);

    /// Takes the disc off wherever it is mounted. Serves events meanwhile, but none of a person. False, with
    /// a line on standard error, where it stays mounted.
    bool unMountDisc(const QString &bsdName);
    /// Asks for the mounts that unMountDisc() took, and doesn't wait.
    void mountDisc(const QString &bsdName);

private:
    bool isMounted(const QString &bsdName) const;
    bool isInDesktopView(const QString &bsdName) const;
    int unmountFileSystem(const QString &bsdName);
    int unmountDesktopView(const QString &bsdName);
    void waitForMounts();

    const Platform m_platform;
    QSet<QString> m_fileSystemsTaken;
    QSet<QString> m_desktopViewsTaken;
    int m_mountsUnderWay = 0;
};

} // namespace kruv
